// Connects the model to the daemon through a session.
#pragma once

#include <list>
#include <memory>
#include <string>

#include "tools/zephtop/dialogs.h"
#include "tools/zephtop/model.h"
#include "zephlinksdk/session.hpp"

namespace zephtop {

class Link {
 public:
  /// `model` receives every record and status, on threads of the session. It must outlive the link. `clock`: see
  /// SessionOptions.
  Link(const ZephlinkSDK_Config& config, Model& model, std::shared_ptr<zephlinksdk::SessionClock> clock = nullptr);

  /// Sends an order and returns at once. The model receives the answer.
  void perform(const Order& order);

  /// Requests the directory, which the model receives.
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
  std::list<Request> requests;  ///< callbacks refer to them as long as the session exists
  zephlinksdk::Session session;
};

}  // namespace zephtop
