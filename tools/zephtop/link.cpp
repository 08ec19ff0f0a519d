#include "tools/zephtop/link.h"

#include <chrono>
#include <utility>

namespace zephtop {

namespace {

/// Passes the records of a function to the model. Failed records do not change it.
template <class Record>
void feed(zephlinksdk::Session& session, Model& model,
          Record (*function)(ZephlinkSDK*, zephlinksdk::Callback<Record>, void*),
          void (Model::*take)(const Record&) = &Model::apply) {
  session.subscribe(function, [&model, take](const Record& record) {
    if (!record.hasError) (model.*take)(record);
  });
}

/// Periods that detect a lost daemon within a second. An answer may take half a second.
zephlinksdk::SessionOptions promptOptions(std::shared_ptr<zephlinksdk::SessionClock> clock) {
  zephlinksdk::SessionOptions options;
  options.probeAfter = std::chrono::milliseconds(300);
  options.quietAfter = std::chrono::milliseconds(800);
  options.clock = std::move(clock);
  return options;
}

}  // namespace

Link::Link(const ZephlinkSDK_Config& config, Model& intoModel, std::shared_ptr<zephlinksdk::SessionClock> clock)
    : model(intoModel),
      session(
          config, [this](zephlinksdk::SessionStatus status) { model.setLink(status); },
          promptOptions(std::move(clock))) {
  feed(session, model, &ZephlinkSDK_getState);
  feed(session, model, &ZephlinkSDK_getConnectedServer);
  feed(session, model, &ZephlinkSDK_getAdapters);
  feed(session, model, &ZephlinkSDK_getConnectionStats);
  feed(session, model, &ZephlinkSDK_getSettings);
  feed(session, model, &ZephlinkSDK_getSessionStats);
  feed(session, model, &ZephlinkSDK_getNetworkSharesAvailable);
  feed(session, model, &ZephlinkSDK_listenForNetworkSharePeerStatusChange);
  feed(session, model, &ZephlinkSDK_listenForNetworkSharePairRequest, &Model::pairRequested);
  feed(session, model, &ZephlinkSDK_listenForNetworkShareNewPeerAvailable, &Model::peerAppeared);
  session.subscribeStats({ZephlinkSDK_Period_Day, ZephlinkSDK_Period_Week, ZephlinkSDK_Period_Month});
}

template <class Record>
bool Link::onAnswer(Record record, void* userData) {
  const Request& request = *static_cast<const Request*>(userData);
  request.model.answered(request.text, record.hasError ? record.errorMessage : "");
  return false;
}

bool Link::onDirectory(ZephlinkSDK_DirectoryResult record, void* userData) {
  const Request& request = *static_cast<const Request*>(userData);
  if (record.hasError) {
    request.model.answered(request.text, record.errorMessage);
  } else {
    request.model.apply(record);
  }
  return false;
}

/// `send` calls a function of the library with the object and the user data of the callback. A refused call never runs
/// its callback.
template <class Send>
void Link::request(const std::string& text, Send send) {
  Request& request = requests.emplace_back(Request{model, text});
  const auto begun = session.call([&](ZephlinkSDK* sdk) { return send(sdk, &request); });
  if (begun.hasError) model.answered(text, begun.errorMessage);
}

void Link::perform(const Order& order) {
  constexpr auto kConnected = onAnswer<ZephlinkSDK_ConnectResult>;
  model.ordered(order.text);
  switch (order.kind) {
    case Order::Kind::Connect:
      return request(order.text, [&order](ZephlinkSDK* sdk, void* data) {
        return ZephlinkSDK_connect(sdk, order.method, kConnected, data);
      });
    case Order::Kind::ConnectToPlace:
      return request(order.text, [&order](ZephlinkSDK* sdk, void* data) {
        const Place& place = order.place;
        if (place.city.empty()) return ZephlinkSDK_connectToCountry(sdk, place.country.c_str(), kConnected, data);
        return ZephlinkSDK_connectToCity(sdk, place.country.c_str(), place.city.c_str(), kConnected, data);
      });
    case Order::Kind::Disconnect:
      return request(order.text, [](ZephlinkSDK* sdk, void* data) {
        return ZephlinkSDK_disconnect(sdk, onAnswer<ZephlinkSDK_StateResult>, data);
      });
    case Order::Kind::SetMode:
      return request(order.text, [&order](ZephlinkSDK* sdk, void* data) {
        return ZephlinkSDK_setMode(sdk, order.mode, onAnswer<ZephlinkSDK_SettingsResult>, data);
      });
    case Order::Kind::SetPriority:
      return request(order.text, [&order](ZephlinkSDK* sdk, void* data) {
        return ZephlinkSDK_setConnectionPriorities(sdk, order.adapterID.c_str(), order.priority,
                                                   onAnswer<ZephlinkSDK_AdaptersResult>, data);
      });
  }
}

void Link::requestDirectory() {
  Request& request = requests.emplace_back(Request{model, "read the directory"});
  // Returns only the head: a second copy of the 750 KB record is avoided.
  const ZephlinkSDK_Result begun =
      session.call([&request](ZephlinkSDK* sdk) { return ZephlinkSDK_getDirectory(sdk, onDirectory, &request).head; });
  if (begun.hasError) model.answered(request.text, begun.errorMessage);
}

}  // namespace zephtop
