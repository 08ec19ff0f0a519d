// Events that a daemon sends while the program runs: streams of safe browsing and of peers, and slow peers.
#include <gtest/gtest.h>

#include "tests/program_case.h"

namespace tests {
namespace {

std::string lookupError(const std::string& data) { return event("report_safe_browsing_lookup_error", data); }
std::string lookupBlock(const std::string& data) { return event("report_safe_browsing_block", data); }

std::string printedError(const std::string& json) { return block("safebrowsing_error", json); }
std::string printedBlock(const std::string& json) { return block("safebrowsing_block", json); }

TEST(SafeBrowsing, StreamsEachEventOnArrival) {
  const std::string longText(300, 'x');
  ScriptedDaemon daemon;
  Process errors(command(daemon.port(), {"safebrowsing", "errors"}));
  Process blocks(command(daemon.port(), {"safebrowsing", "redirects", "-1"}));
  const std::string firstError = printedError(R"({"error":-8,"host":"a.example","message":"too slow"})");
  ASSERT_TRUE(sendUntilPrinted(daemon, errors,
                               lookupError(R"({"error":-8,"host":"a.example","safebro_msg":"too slow"})"), firstError));
  const std::string firstBlock = printedBlock(R"({"host":"b.example","redirected":true})");
  ASSERT_TRUE(sendUntilPrinted(daemon, blocks, lookupBlock(R"({"redirected":true,"host":"b.example"})"), firstBlock));

  // Missing and mistyped members read as zero: no value of the previous event remains.
  const std::string tooLong = R"({"host":")" + longText + R"(","safebro_msg":")" + longText + "\"}";
  for (const char* data : {"null", R"({"error":"1","host":7,"safebro_msg":[]})", tooLong.c_str()}) {
    daemon.send(lookupError(data));
    daemon.send(lookupBlock(data));
  }
  const std::string host = longText.substr(0, 252);
  const std::string lastError =
      printedError(R"({"error":0,"host":")" + host + R"(","message":")" + longText.substr(0, 199) + "\"}");
  const std::string lastBlock = printedBlock(R"({"host":")" + host + R"(","redirected":false})");
  EXPECT_TRUE(errors.waitForOutput(lastError));
  EXPECT_TRUE(blocks.waitForOutput(lastBlock));
  errors.kill();
  blocks.kill();
  EXPECT_EQ(afterRepeated(firstError, errors.finish().out), printedError(R"({"error":0,"host":"","message":""})") +
                                                                printedError(R"({"error":0,"host":"7","message":""})") +
                                                                lastError);
  EXPECT_EQ(afterRepeated(firstBlock, blocks.finish().out), printedBlock(R"({"host":"","redirected":false})") +
                                                                printedBlock(R"({"host":"7","redirected":false})") +
                                                                lastBlock);
  EXPECT_EQ(daemon.received().size(), 0U);
}

/// The duration counts from the first event, so a stream without events does not end: `errors` outlives `redirects`.
TEST(SafeBrowsing, StreamsEndAfterTheirDuration) {
  ScriptedDaemon daemon;
  Process errors(command(daemon.port(), {"safebrowsing", "errors", "1"}));
  Process blocks(command(daemon.port(), {"safebrowsing", "redirects", "1"}));
  const auto expectEnd = [&daemon](Process& run, const std::string& sent, const std::string& printed) {
    ASSERT_TRUE(sendUntilPrinted(daemon, run, sent, printed));
    const ProgramRun ended = run.finish();
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(afterRepeated(printed, ended.out), "");
    EXPECT_EQ(ended.err, "");
  };
  expectEnd(blocks, lookupBlock("{}"), printedBlock(R"({"host":"","redirected":false})"));
  expectEnd(errors, lookupError("{}"), printedError(R"({"error":0,"host":"","message":""})"));
}

const std::string kPaired =
    event("report_networksharing_peer_pair_change", R"({"uuid":"p-1","display_name":"One","have_auth_token":true})");
const std::string kAuthenticated = event("report_networksharing_peer_status_change",
                                         R"({"uuid":"p-1","peer_role":"host","peerStatus":2,"tunnelStatus":1})");
constexpr const char* kConnection = R"({"peerStatus":"authenticated","role":"host","uuid":"p-1"})";

/// The calls with a longer time-out still wait when another one has timed out.
TEST(Peers, WaitLongerForSlowPeers) {
  ScriptedDaemon daemon;
  Process reconnecting(command(daemon.port(), {"networksharing", "reconnect", "p-1"}));
  Process requesting(command(daemon.port(), {"networksharing", "peer", "request", "p-1"}));
  ASSERT_TRUE(daemon.waitForRequests(2));
  EXPECT_EQ(zephctl(daemon.port(), {"version"}).status, 1);
  daemon.send(kPaired);
  EXPECT_EQ(requesting.finish().out, printed(parsed(R"({"displayName":"One","haveAuthToken":true,"uuid":"p-1"})")));
  daemon.send(kAuthenticated);
  EXPECT_EQ(reconnecting.finish().out, printed(parsed(kConnection)));
}

TEST(Peers, EventsAppearInStatistics) {
  ScriptedDaemon daemon;
  Process run(command(daemon.port(), {"stats", "0", "networksharing"}));
  const std::string newPeer =
      block("networksharing_newpeer", R"({"displayName":"One","haveAuthToken":false,"uuid":"p-1"})");
  ASSERT_TRUE(sendUntilPrinted(
      daemon, run, event("report_networksharing_new_peer_available", R"({"uuid":"p-1","display_name":"One"})"),
      newPeer));
  daemon.send(event("report_networkshare_auth_request", R"({"uuid":"p-2","display_name":"Two"})"));
  daemon.send(kPaired);  // No stream reports a pairing.
  daemon.send(event("report_networksharing_peer_status_change",
                    R"({"uuid":"p-1","peer_role":"host","peerStatus":0,"type":3,"msg":"refused by peer"})"));
  daemon.send(kAuthenticated);
  const std::string last = block("networksharing_peer_status_change", kConnection);
  EXPECT_TRUE(run.waitForOutput(last));
  run.kill();
  EXPECT_EQ(afterRepeated(newPeer, run.finish().out),
            block("networksharing_pairrequest", R"({"displayName":"Two","haveAuthToken":false,"uuid":"p-2"})") +
                block("networksharing_peer_status_change",
                      R"({"errorCode":3,"errorMessage":"refused by peer","errorType":"Invalid credentials",)"
                      R"("peerStatus":"disconnected","role":"host","uuid":"p-1"})") +
                last);
}

}  // namespace
}  // namespace tests
