// zephtop's link to the daemon: a session that feeds the model.
#pragma once

#include <list>
#include <memory>
#include <string>

#include "tools/zephtop/hands.h"
#include "tools/zephtop/model.h"
#include "zephlinksdk/session.hpp"

namespace zephtop {

class Link {
 public:
  /// `model` gets every record and status, on threads of the session. It must outlive the link.
  /// `clock`: see SessionOptions.
  Link(const ZephlinkSDK_Config& config, Model& model, std::shared_ptr<zephlinksdk::SessionClock> clock = nullptr);

  /// Sends an order and returns at once. The model gets the answer.
  void perform(const Order& order);

  /// Asks for the directory. The model gets it.
  void requestDirectory();

 private:
  struct Request {
    Model& model;
    std::string text;
  };

  template <class Send>
  void request(const std::string& text, Send send);

  template <class Record>
  static bool onAnswer(Record record, void* userData);
  static bool onDirectory(ZephlinkSDK_DirectoryResult record, void* userData);

  Model& model;
  std::list<Request> requests;  ///< callbacks refer to them as long as the session lives
  zephlinksdk::Session session;
};

}  // namespace zephtop
