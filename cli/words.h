// The words that stand in the output (or on the command line) alone: on the wire their values are numbers or have other
// words. What wire and output share is in sdk/words.h.
#pragma once

#include <cstdint>

#include "sdk/results.h"
#include "sdk/word_table.h"

namespace cli {

inline constexpr auto kStateWords = zephlinksdk::wordTable<uint32_t>(
    {
        {ZephlinkSDK_State_LoggedOut, "LOGGED_OUT"},
        {ZephlinkSDK_State_LoggingIn, "LOGGING_IN"},
        {ZephlinkSDK_State_LoggedIn, "LOGGED_IN"},
        {ZephlinkSDK_State_AutoConnecting, "AUTO_CONNECTING"},
        {ZephlinkSDK_State_Connecting, "CONNECTING"},
        {ZephlinkSDK_State_Disconnecting, "DISCONNECTING"},
        {ZephlinkSDK_State_Connected, "CONNECTED"},
        {ZephlinkSDK_State_OverLimit, "OVERLIMIT"},
    },
    "UNKNOWN");
constexpr const char* stateText(uint32_t value) { return kStateWords.text(value); }

inline constexpr auto kConnectMethodWords = zephlinksdk::wordTable<ZephlinkSDK_ConnectMethod>(
    {
        {ZephlinkSDK_ConnectMethod_Closest, "closest"},
        {ZephlinkSDK_ConnectMethod_Private, "private"},
        {ZephlinkSDK_ConnectMethod_Public, "public"},
        {ZephlinkSDK_ConnectMethod_Last, "last"},
        {ZephlinkSDK_ConnectMethod_P2P, "p2p"},
        {ZephlinkSDK_ConnectMethod_Auto, "auto"},
        {ZephlinkSDK_ConnectMethod_Country, "country"},
        {ZephlinkSDK_ConnectMethod_Exact, "exact"},
        {ZephlinkSDK_ConnectMethod_Proxy, "proxy"},
        {ZephlinkSDK_ConnectMethod_IgnoreLast, "ignorelast"},
    },
    "unknown");
constexpr const char* connectMethodText(ZephlinkSDK_ConnectMethod value) { return kConnectMethodWords.text(value); }

inline constexpr auto kPaymentTypeWords = zephlinksdk::wordTable<ZephlinkSDK_PaymentType>(
    {
        {ZephlinkSDK_PaymentType_Free, "free"},
        {ZephlinkSDK_PaymentType_Monthly, "monthly"},
        {ZephlinkSDK_PaymentType_Yearly, "yearly"},
    },
    "Unknown payment type");
constexpr const char* paymentTypeText(ZephlinkSDK_PaymentType value) { return kPaymentTypeWords.text(value); }

inline constexpr auto kAccountActionWords = zephlinksdk::wordTable<ZephlinkSDK_AccountAction>(
    {
        {ZephlinkSDK_AccountAction_None, "none"},
        {ZephlinkSDK_AccountAction_RetryLogin, "retry login"},
        {ZephlinkSDK_AccountAction_ConnectInternet, "connect to internet and retry login"},
    },
    "Unknown action");
constexpr const char* accountActionText(ZephlinkSDK_AccountAction value) { return kAccountActionWords.text(value); }

inline constexpr auto kAdapterStateWords = zephlinksdk::wordTable<ZephlinkSDK_AdapterState>(
    {
        {ZephlinkSDK_AdapterState_Disconnected, "disconnected"},
        {ZephlinkSDK_AdapterState_Connecting, "connecting"},
        {ZephlinkSDK_AdapterState_Connected, "connected"},
    },
    "disconnected");
constexpr const char* adapterStateText(ZephlinkSDK_AdapterState value) { return kAdapterStateWords.text(value); }

inline constexpr auto kStreamHealthWords = zephlinksdk::wordTable<ZephlinkSDK_StreamHealth>(
    {
        {ZephlinkSDK_StreamHealth_Stopped, "stopped"},
        {ZephlinkSDK_StreamHealth_Poor, "poor"},
        {ZephlinkSDK_StreamHealth_Good, "good"},
    },
    "stopped");
constexpr const char* streamHealthText(ZephlinkSDK_StreamHealth value) { return kStreamHealthWords.text(value); }

// A period without a name has the empty text: its number of hours stands for it.
inline constexpr auto kPeriodWords = zephlinksdk::wordTable<uint32_t>(
    {
        {ZephlinkSDK_Period_Current, "current"},
        {ZephlinkSDK_Period_Day, "day"},
        {ZephlinkSDK_Period_Week, "week"},
        {ZephlinkSDK_Period_Month, "month"},
        {ZephlinkSDK_Period_Total, "total"},
    },
    "");
constexpr const char* periodText(uint32_t hours) { return kPeriodWords.text(hours); }

inline constexpr auto kSpeedTestTypeWords = zephlinksdk::wordTable<ZephlinkSDK_SpeedTestType>(
    {
        {ZephlinkSDK_SpeedTestType_Speed, "speed"},
        {ZephlinkSDK_SpeedTestType_Streaming, "streaming"},
    },
    "speed");
constexpr const char* speedTestTypeText(ZephlinkSDK_SpeedTestType value) { return kSpeedTestTypeWords.text(value); }

inline constexpr auto kPeerStatusWords = zephlinksdk::wordTable<ZephlinkSDK_PeerStatus>(
    {
        {ZephlinkSDK_PeerStatus_Disconnected, "disconnected"},
        {ZephlinkSDK_PeerStatus_Unauthenticated, "unauthenticated"},
        {ZephlinkSDK_PeerStatus_Authenticated, "authenticated"},
    },
    "disconnected");
constexpr const char* peerStatusText(ZephlinkSDK_PeerStatus value) { return kPeerStatusWords.text(value); }

inline constexpr auto kPeerTunnelStatusWords = zephlinksdk::wordTable<ZephlinkSDK_PeerTunnelStatus>(
    {
        {ZephlinkSDK_PeerTunnelStatus_Inactive, "inactive"},
        {ZephlinkSDK_PeerTunnelStatus_Active, "active"},
        {ZephlinkSDK_PeerTunnelStatus_DisabledOnClient, "disabled on client"},
        {ZephlinkSDK_PeerTunnelStatus_DisabledOnHost, "disabled on host"},
        {ZephlinkSDK_PeerTunnelStatus_NoNetworks, "no networks available"},
        {ZephlinkSDK_PeerTunnelStatus_Error, "tunnel error"},
        {ZephlinkSDK_PeerTunnelStatus_NotAuthenticated, "not authenticated"},
        {ZephlinkSDK_PeerTunnelStatus_NetworksOverLimit, "networks over limit"},
        {ZephlinkSDK_PeerTunnelStatus_HostNotConnected, "host's VPN not connected"},
        {ZephlinkSDK_PeerTunnelStatus_Paused, "paused"},
    },
    "tunnel error");
constexpr const char* peerTunnelStatusText(ZephlinkSDK_PeerTunnelStatus value) {
  return kPeerTunnelStatusWords.text(value);
}

}  // namespace cli
