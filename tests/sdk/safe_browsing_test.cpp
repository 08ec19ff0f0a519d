// Safe browsing as a host of the library uses it: what is refused before anything is sent.
#include <gtest/gtest.h>

#include "tests/sdk/host.h"

namespace tests {
namespace {

TEST(SafeBrowsing, BadArgumentsAreRefused) {
  ScriptedDaemon daemon;
  const Sdk sdk = connectTo(daemon.port());
  auto* handle = sdk.get();
  const std::uint32_t codes[] = {
      ZephlinkSDK_initSafeBrowsing(handle, nullptr, nullptr, nullptr).errorCode,
      ZephlinkSDK_setSafeBrowsingConfig(handle, nullptr, nullptr, nullptr).errorCode,
      ZephlinkSDK_refreshSafeBrowsingToken(handle, nullptr, nullptr, nullptr).errorCode,
      ZephlinkSDK_setSafeBrowsingLogLevel(handle, static_cast<ZephlinkSDK_SafeBrowsingLogLevel>(5), nullptr, nullptr)
          .errorCode,
      ZephlinkSDK_setSafeBrowsingSafeNetworkOverride(
          handle, static_cast<ZephlinkSDK_SafeBrowsingSafeNetworkOverride>(3), nullptr, nullptr)
          .errorCode,
  };
  for (const std::uint32_t code : codes) EXPECT_EQ(code, ZephlinkSDK_Error_InvalidArgument);
  const auto record = ZephlinkSDK_listenForSafeBrowsingError(handle, nullptr, nullptr);
  EXPECT_TRUE(record.hasError);
  EXPECT_EQ(record.errorCode, ZephlinkSDK_Error_CallbackRequired);
  EXPECT_STREQ(record.errorMessage, "A callback is required for this call");
  EXPECT_EQ(ZephlinkSDK_listenForSafeBrowsingBlock(handle, nullptr, nullptr).errorCode,
            ZephlinkSDK_Error_CallbackRequired);
  ASSERT_TRUE(daemon.waitForConnections(1));
  EXPECT_EQ(daemon.heard().size(), 0U);
}

}  // namespace
}  // namespace tests
