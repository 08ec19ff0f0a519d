// A daemon on libwebsockets: lws ANSWERS. The file contains pairs of lines: a request and the text of its report.
#include <libwebsockets.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { kMostAnswers = 64 };

struct answer {
  char* request;
  char* report;
};

// The queue of a connection, as indices of answers.
struct link {
  int waiting[kMostAnswers];
  int count;
};

static struct answer answers[kMostAnswers];
static int answerCount = 0;

static char* readLine(FILE* file) {
  char* line = NULL;
  size_t size = 0;
  const ssize_t length = getline(&line, &size, file);
  if (length <= 0) return NULL;
  line[length - 1] = '\0';
  return line;
}

static void readAnswers(const char* path) {
  FILE* file = fopen(path, "r");
  if (file == NULL) exit(1);
  while (answerCount < kMostAnswers && (answers[answerCount].request = readLine(file)) != NULL) {
    answers[answerCount].report = readLine(file);
    if (answers[answerCount++].report == NULL) exit(1);
  }
  fclose(file);
}

static void receive(struct lws* wsi, struct link* link, const char* text, size_t size) {
  for (int i = 0; i < answerCount; ++i) {
    const size_t length = strlen(answers[i].request);
    // ["request",...
    if (size < length + 3 || memcmp(text + 2, answers[i].request, length) != 0 || text[length + 2] != '"') continue;
    if (link->count < kMostAnswers) link->waiting[link->count++] = i;
    lws_callback_on_writable(wsi);
  }
}

static int answer(struct lws* wsi, struct link* link) {
  if (link->count == 0) return 0;
  const char* report = answers[link->waiting[0]].report;
  memmove(link->waiting, link->waiting + 1, (size_t)--link->count * sizeof link->waiting[0]);
  const size_t size = strlen(report);
  unsigned char* frame = malloc(LWS_PRE + size);
  if (frame == NULL) return -1;
  memcpy(frame + LWS_PRE, report, size);
  const int written = lws_write(wsi, frame + LWS_PRE, size, LWS_WRITE_TEXT);
  free(frame);
  if (link->count > 0) lws_callback_on_writable(wsi);
  return written < (int)size ? -1 : 0;
}

static int onEvent(struct lws* wsi, enum lws_callback_reasons reason, void* user, void* in, size_t size) {
  struct link* link = user;
  switch (reason) {
    case LWS_CALLBACK_ESTABLISHED:
      link->count = 0;
      return 0;
    case LWS_CALLBACK_RECEIVE:
      receive(wsi, link, in, size);
      return 0;
    case LWS_CALLBACK_SERVER_WRITEABLE:
      return answer(wsi, link);
    default:
      return 0;
  }
}

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  readAnswers(argv[1]);
  lws_set_log_level(LLL_ERR, NULL);
  const struct lws_protocols protocols[] = {
      {.name = "event-protocol",
       .callback = onEvent,
       .per_session_data_size = sizeof(struct link),
       .rx_buffer_size = 65536},
      {0},
  };
  const struct lws_context_creation_info info = {
      .iface = "lo",
      .protocols = protocols,
      .options = LWS_SERVER_OPTION_DISABLE_IPV6 | LWS_SERVER_OPTION_EXPLICIT_VHOSTS};
  struct lws_context* context = lws_create_context(&info);
  struct lws_vhost* vhost = context != NULL ? lws_create_vhost(context, &info) : NULL;
  if (vhost == NULL) return 1;
  printf("listening on 127.0.0.1:%d\n", lws_get_vhost_listen_port(vhost));
  fflush(stdout);
  while (lws_service(context, 0) >= 0) {
  }
  return 0;
}
