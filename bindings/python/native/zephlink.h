/* What the extension module calls, as cffi reads it: links, boxes, and (generated) a starting function for each method
 * of the library. All functions are thread-safe and run without the interpreter's lock. */

/* A connection to the daemon. */
typedef struct zephlink_link zephlink_link;

/* Where the records of one call or subscription arrive. */
typedef struct zephlink_box zephlink_box;

/* What `zephlink_start_...` and `zephlink_subscribe_...` return. */
enum {
  ZEPHLINK_STARTED = 0, /* its records go into the box */
  ZEPHLINK_REFUSED = 1, /* the box contains the error record */
  ZEPHLINK_FORKED = 2   /* the link belongs to the parent process; nothing was done */
};

/* Null without memory. */
zephlink_link* zephlink_link_open(const ZephlinkSDK_Config* config);

/* The periods of a session in milliseconds, see zephlinksdk::SessionOptions; 0 for the default. */
typedef struct zephlink_periods {
  uint32_t probe_after;
  uint32_t quiet_after;
  uint32_t renew_after;
  uint32_t refresh_every;
  uint32_t least_pause;
  uint32_t most_pause;
} zephlink_periods;
/* The same with a session, which keeps its subscriptions alive. Null without memory or without a thread. */
zephlink_link* zephlink_session_open(const ZephlinkSDK_Config* config, const zephlink_periods* periods);
/* A SessionStatus, -1 after the end. */
int zephlink_session_status(zephlink_link* link);
const char* zephlink_status_text(int status);
/* Puts the current status into the box, and each later one: a byte. */
int zephlink_subscribe_status(zephlink_box* box);
/* ZephlinkSDK_subscribeStats for a session. */
int zephlink_session_stats(zephlink_box* box, bool enable, uint8_t count, const uint32_t* hours);

/* Ends all calls and subscriptions and destroys the library's object. Starting anything else closes its box. Does
 * nothing in a child process, and nothing the second time. */
void zephlink_link_close(zephlink_link* link);
/* Closes and frees. Boxes may live on. */
void zephlink_link_free(zephlink_link* link);

/* Null and `errno` if the system has no memory or no descriptor left. `capacity` 0 is no bound. */
zephlink_box* zephlink_box_new(zephlink_link* link, size_t capacity, bool once);
/* Whether a record has come or the box is closed; waits at most `milliseconds`, and returns early after a signal. */
bool zephlink_box_wait(zephlink_box* box, int milliseconds);
/* The oldest record, null if there is none. The caller frees it. */
void* zephlink_box_take(zephlink_box* box);
void zephlink_record_free(void* record);
/* Ends what fills the box and keeps what is in it. Once it returns, no more comes. */
void zephlink_box_finish(zephlink_box* box);
/* The same, empties the box, and ends all waits. */
void zephlink_box_close(zephlink_box* box);
bool zephlink_box_closed(zephlink_box* box);
uint64_t zephlink_box_dropped(zephlink_box* box);
/* A descriptor that is readable while `zephlink_box_wait` would return true; the box owns it. */
int zephlink_box_descriptor(zephlink_box* box);
/* Closes and frees. */
void zephlink_box_free(zephlink_box* box);
