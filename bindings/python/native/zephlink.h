/* The functions of the extension module, as cffi reads them: links, boxes, and (generated) a starting function for
 * each method of the library. All functions are thread-safe and run without the interpreter's lock. */

/* A connection to the daemon. */
typedef struct zephlink_link zephlink_link;

/* The queue of records of one call or subscription. */
typedef struct zephlink_box zephlink_box;

/* The results of `zephlink_start_...` and `zephlink_subscribe_...`. */
enum {
  ZEPHLINK_STARTED = 0, /* the box will receive the records */
  ZEPHLINK_REFUSED = 1, /* the box contains the error record */
  ZEPHLINK_FORKED = 2   /* the link belongs to the parent process; nothing was done */
};

/* Returns null when out of memory. */
zephlink_link* zephlink_link_open(const ZephlinkSDK_Config* config);

/* The periods of a session in milliseconds, see zephlinksdk::SessionOptions; 0: the default. */
typedef struct zephlink_periods {
  uint32_t probe_after;
  uint32_t quiet_after;
  uint32_t renew_after;
  uint32_t refresh_every;
  uint32_t least_pause;
  uint32_t most_pause;
} zephlink_periods;
/* The same with a session, which keeps its subscriptions alive. Returns null if memory or threads are exhausted. */
zephlink_link* zephlink_session_open(const ZephlinkSDK_Config* config, const zephlink_periods* periods);
/* Returns a SessionStatus, or -1 after the link was closed. */
int zephlink_session_status(zephlink_link* link);
const char* zephlink_status_text(int status);
/* Puts the current status and each later one into the box, as a byte. */
int zephlink_subscribe_status(zephlink_box* box);
/* Calls ZephlinkSDK_subscribeStats for a session. */
int zephlink_session_stats(zephlink_box* box, bool enable, uint8_t count, const uint32_t* hours);

/* Ends all calls and subscriptions and destroys the library's object. Later calls close their boxes. Does nothing in a
 * child process or if called again. */
void zephlink_link_close(zephlink_link* link);
/* Closes and frees the link. Its boxes remain valid. */
void zephlink_link_free(zephlink_link* link);

/* Returns null and sets `errno` if memory or descriptors are exhausted. `capacity` 0: no bound. */
zephlink_box* zephlink_box_new(zephlink_link* link, size_t capacity, bool once);
/* Returns whether a record has arrived or the box is closed; waits at most `milliseconds`, less after a signal. */
bool zephlink_box_wait(zephlink_box* box, int milliseconds);
/* Returns the oldest record, or null. The caller frees it. */
void* zephlink_box_take(zephlink_box* box);
void zephlink_record_free(void* record);
/* Ends the subscription of the box and keeps its records. After it returns, no more records arrive. */
void zephlink_box_finish(zephlink_box* box);
/* Ends the subscription, empties the box, and ends all waits. */
void zephlink_box_close(zephlink_box* box);
bool zephlink_box_closed(zephlink_box* box);
uint64_t zephlink_box_dropped(zephlink_box* box);
/* Returns a descriptor that is readable while `zephlink_box_wait` would return true; the box owns it. */
int zephlink_box_descriptor(zephlink_box* box);
/* Closes and frees the box. */
void zephlink_box_free(zephlink_box* box);
