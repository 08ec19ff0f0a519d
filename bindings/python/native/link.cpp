#include "link.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <limits>
#include <new>
#include <system_error>

namespace zephlink {

namespace {

/// An object of a session, which the session keeps until this lease ends.
struct LeasedObject {
  explicit LeasedObject(std::shared_ptr<zephlinksdk::Session> owner) : session(std::move(owner)), lease(*session) {}

  std::shared_ptr<zephlinksdk::Session> session;
  zephlinksdk::Session::Lease lease;
};

}  // namespace

Link::Link(const ZephlinkSDK_Config& config) : sdk(ZephlinkSDK_create(config), ZephlinkSDK_destroy) {
  if (!sdk) throw std::bad_alloc();
}

Link::Link(const ZephlinkSDK_Config& config, zephlinksdk::SessionOptions options)
    : daemonSession(std::make_shared<zephlinksdk::Session>(
          config, [this](zephlinksdk::SessionStatus status) { statusChanged(status); }, std::move(options))) {}

Object Link::object() noexcept {
  const auto current = session();
  if (!current) {
    const std::lock_guard lock(mutex);
    return sdk;
  }
  try {
    const auto leased = std::make_shared<LeasedObject>(current);
    return {leased, leased->lease.sdk()};
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

std::shared_ptr<zephlinksdk::Session> Link::session() {
  const std::lock_guard lock(mutex);
  return daemonSession;
}

void Link::close() {
  Object lastObject;
  std::shared_ptr<zephlinksdk::Session> lastSession;
  {
    const std::lock_guard lock(mutex);
    isClosed = true;
    lastObject.swap(sdk);
    lastSession.swap(daemonSession);
  }
  {
    const std::lock_guard lock(boxesMutex);
    for (zephlink_box* box : boxes) box->close();
  }
  // Both are destroyed here, or at the end of a call that has just started.
}

bool Link::closed() {
  const std::lock_guard lock(mutex);
  return isClosed;
}

void Link::watch(zephlink_box* box) {
  const auto current = session();
  if (!current) return;
  const std::lock_guard lock(watchersMutex);
  const zephlinksdk::SessionStatus status = current->status();
  box->records.put(&status, sizeof status);
  watchers.insert(box);
}

/// Call on the session's thread.
void Link::statusChanged(zephlinksdk::SessionStatus status) {
  const std::lock_guard lock(watchersMutex);
  for (zephlink_box* box : watchers) box->records.put(&status, sizeof status);
}

void Link::unwatch(zephlink_box* box) {
  const std::lock_guard lock(watchersMutex);
  watchers.erase(box);
}

void Link::add(zephlink_box* box) {
  const std::lock_guard lock(boxesMutex);
  boxes.insert(box);
}

void Link::remove(zephlink_box* box) {
  const std::lock_guard lock(boxesMutex);
  boxes.erase(box);
}

}  // namespace zephlink

zephlink_box::zephlink_box(std::shared_ptr<zephlink::Link> ofLink, std::size_t capacity, bool once)
    : link(std::move(ofLink)), records(capacity, once) {
  link->add(this);
}

zephlink_box::~zephlink_box() {
  link->remove(this);
  finish();
}

void zephlink_box::started(zephlink::Object object, std::uint64_t handle) noexcept {
  const std::lock_guard lock(mutex);
  sdk = std::move(object);
  number = handle;
  if (finished) end();
}

void zephlink_box::subscribed(std::shared_ptr<zephlinksdk::Session> inSession, std::uint64_t id) noexcept {
  const std::lock_guard lock(mutex);
  session = std::move(inSession);
  number = id;
  if (finished) end();
}

void zephlink_box::finish() {
  link->unwatch(this);
  const std::lock_guard lock(mutex);
  finished = true;
  end();
}

/// REQUIRES: the mutex is locked.
void zephlink_box::end() {
  if (session) session->unsubscribe(number);
  if (sdk) ZephlinkSDK_removeListener(sdk.get(), number);
  session.reset();
  sdk.reset();
}

// ---- For C ---------------------------------------------------------------------------------------------------------

extern "C" {

zephlink_link* zephlink_link_open(const ZephlinkSDK_Config* config) {
  try {
    return new zephlink_link{std::make_shared<zephlink::Link>(*config)};
  } catch (const std::exception&) {
    return nullptr;
  }
}

zephlink_link* zephlink_session_open(const ZephlinkSDK_Config* config, const zephlink_periods* periods) {
  using std::chrono::milliseconds;
  zephlinksdk::SessionOptions options;
  const auto choose = [](milliseconds& option, uint32_t chosen) {
    if (chosen != 0) option = milliseconds(chosen);
  };
  choose(options.probeAfter, periods->probe_after);
  choose(options.quietAfter, periods->quiet_after);
  choose(options.renewAfter, periods->renew_after);
  choose(options.refreshEvery, periods->refresh_every);
  choose(options.leastPause, periods->least_pause);
  choose(options.mostPause, periods->most_pause);
  try {
    return new zephlink_link{std::make_shared<zephlink::Link>(*config, options)};
  } catch (const std::exception&) {
    return nullptr;
  }
}

int zephlink_session_status(zephlink_link* link) {
  const auto session = link->link->session();
  return session ? static_cast<int>(session->status()) : -1;
}

const char* zephlink_status_text(int status) {
  return zephlinksdk::sessionStatusText(static_cast<zephlinksdk::SessionStatus>(status));
}

int zephlink_subscribe_status(zephlink_box* box) {
  if (const auto status = zephlink::startError(box)) return *status;
  box->link->watch(box);
  return ZEPHLINK_STARTED;
}

int zephlink_session_stats(zephlink_box* box, bool enable, uint8_t count, const uint32_t* hours) {
  if (const auto status = zephlink::startError(box)) return *status;
  try {
    const auto session = box->link->session();
    if (session && enable) session->subscribeStats({hours, hours + count});
    if (session && !enable) session->unsubscribeStats();
    const ZephlinkSDK_Result success{};
    box->records.put(&success, sizeof success);
  } catch (const std::bad_alloc&) {
    box->close();
  }
  return ZEPHLINK_STARTED;
}

void zephlink_link_close(zephlink_link* link) {
  if (!link->link->forked()) link->link->close();
}

// A child process must not touch this memory: a thread of the parent may have been changing it.
void zephlink_link_free(zephlink_link* link) {
  if (link->link->forked()) return;
  link->link->close();
  delete link;
}

zephlink_box* zephlink_box_new(zephlink_link* link, size_t capacity, bool once) {
  const size_t bound = capacity != 0 ? capacity : std::numeric_limits<size_t>::max();
  try {
    return new zephlink_box(link->link, bound, once);
  } catch (const std::system_error& error) {
    errno = error.code().value();
  } catch (const std::exception&) {
    errno = ENOMEM;
  }
  return nullptr;
}

bool zephlink_box_wait(zephlink_box* box, int milliseconds) { return box->records.wait(milliseconds); }

void* zephlink_box_take(zephlink_box* box) { return box->records.take().release(); }

void zephlink_record_free(void* record) { std::free(record); }

void zephlink_box_finish(zephlink_box* box) { box->finish(); }

void zephlink_box_close(zephlink_box* box) {
  if (!box->link->forked()) box->close();
}

bool zephlink_box_closed(zephlink_box* box) { return box->records.closed(); }

uint64_t zephlink_box_dropped(zephlink_box* box) { return box->records.dropped(); }

int zephlink_box_descriptor(zephlink_box* box) { return box->records.descriptor(); }

void zephlink_box_free(zephlink_box* box) {
  if (!box->link->forked()) delete box;
}

}  // extern "C"
