"""Calls every method once with zephsim: checks the requests and the types of the results."""

import dataclasses
import enum
import inspect
import json
import pickle
import re
import typing

import pytest
import zephlink as z
from conftest import ROOT, wait_until
from zephlink import _native, _types

ANN, BOB = (f"c1d7b3a0-0f6e-4b59-a2c8-31e5f7094d0{number}" for number in (1, 2))
CODE = "eyJ1IjoiYzFkN2IzYTAtMGY2ZS00YjU5LWEyYzgtMzFlNWY3MDk0ZDAxIn0="
DNS, WEB = z.ProtocolPortPair(z.PortProtocol.UDP, 53, 0), z.ProtocolPortPair(z.PortProtocol.TCP, 80, 90)
PLACES = {"<ANN>": ANN, "<BOB>": BOB, "<CODE>": CODE, "<FILE>": __file__}

# Method, arguments, requests; in an order that the simulator can serve.
CALLS = [
    ("login", ["demo@example.com", "demo"], 'login {"password":"demo","username":"demo@example.com"}'),
    ("get_state", [], "request_current_state"),
    ("get_version", [], "request_version_data"),
    ("connect", [z.ConnectMethod.CLOSEST], 'server_auto_connect {"server":"user"}'),
    ("connect_combined", ["us|nyc"], 'server_auto_connect {"server":"us|nyc"}'),
    ("get_directory", [], "request_directory"),
    ("connect_to_country", ["de"], 'server_auto_connect {"server":"de"}'),
    ("connect_to_city", ["us", "nyc"], 'server_auto_connect {"server":"us|nyc"}'),
    ("connect_to_server", ["us", "nyc", 1], 'server_auto_connect {"server":"us|nyc|1"}'),
    ("connect_to_exact_server", ["us", "nyc", 1], 'server_auto_connect {"server":"#us|nyc|1"}'),
    ("connect_to_proxy", [], 'server_auto_connect {"server":"proxy"}'),
    ("connect_ignore_last", [], 'server_auto_connect {"server":"ignorelast"}'),
    ("get_connected_server", [], "request_connected_server"),
    ("get_session_stats", [], "request_session_stats"),
    ("get_connection_stats", [], "request_connection_stats"),
    ("get_streaming_stats", [], "request_streaming_stats"),
    ("get_historic_connection_stats", [], "request_historic_connection_stats ..."),
    ("disconnect", [], "server_disconnect"),
    ("get_server_settings", [], "request_server_settings"),
    ("set_connect_method_combined", ["country", "us"],
     'set_server_connectbest {"connect_to_best_method":"country","countryCode":"us"}'),
    ("set_connect_method", [z.ConnectMethod.P2P],
     'set_server_connectbest {"connect_to_best_method":"p2p","countryCode":""}'),
    ("set_connect_method_country", ["us"],
     'set_server_connectbest {"connect_to_best_method":"country","countryCode":"us"}'),
    ("set_connect_method_city", ["us", "nyc"],
     'set_server_connectbest {"connect_to_best_method":"country","countryCode":"us|nyc"}'),
    ("set_connect_method_server", ["us", "nyc", 2],
     'set_server_connectbest {"connect_to_best_method":"country","countryCode":"us|nyc|2"}'),
    ("set_connect_method_exact_server", ["us", "nyc", 2],
     'set_server_connectbest {"connect_to_best_method":"exact","countryCode":"us|nyc|2"}'),
    ("subscribe_stats", [True, [24, 168]],
     'stat_subscribe {"enable":true,"periods":[24,168]}', 'stat_subscribe {"enable":true}'),
    ("subscribe_stats", [False], 'stat_subscribe {"enable":false}'),
    ("get_accounting_data", [], "request_accounting_data"),
    ("get_directory_settings", [], "request_directory_url"),
    ("set_directory_domain", ["directory.example"], 'set_directory_domain {"domain":"directory.example"}'),
    ("set_directory_gateway_uri", [None], "set_directory_gateway_uri"),
    ("set_enable_esni", [True], "request_directory_url"),
    ("get_settings", [], "request_connection_settings"),
    ("set_tunnel_encrypted", [False], 'set_encryption_enabled {"enable":false}'),
    ("set_connection_encryption", ["eth0", True], 'set_encryption_enabled {"enable":true,"guid":"eth0"}'),
    ("set_jumbo_packets", [True], 'set_dev_jumbo_packets {"enable":true}'),
    ("set_packet_aggregation", [True], 'set_packet_aggregation {"enable":true}'),
    ("set_header_compression", [True], 'set_header_compression {"enable":true}'),
    ("set_startup_connect", [True], 'set_startup_connect {"connect":true}'),
    ("set_enable_default_route", [True], 'set_connection_enable_default_route {"enabled":true}'),
    ("set_mode", [z.BondingMode.STREAMING], 'set_connection_algorithm {"algorithm":"STR"}'),
    ("set_connection_transport_mode", [z.TransportMode.TCP_MULTI],
     'set_connection_transport {"transport_mode":"tcp-multi"}'),
    ("set_max_redundant_sends", [3], 'set_max_redundant_sends {"max_redundant":3}'),
    ("set_overflow_threshold", [1.5], 'set_overflow_threshold {"speed":1.5}'),
    ("set_priority_overflow_threshold", [2], 'set_priority_overflow_threshold {"speed":2.0}'),
    ("set_target_number_of_connections", [4, 5], 'set_target_num_connections {"download":5,"upload":4}'),
    ("set_maximum_connect_retry", [6], 'set_maximum_connect_retry {"value":6}'),
    ("set_maximum_transport_retry", [7], 'set_maximum_transport_retry {"value":7}'),
    ("set_forward_ports", [[DNS]],
     'set_connection_forward_ports {"forward_ports":[{"port":53,"portRangeEnd":0,"proto":"udp"}]}'),
    ("set_downstream_subnets", [[z.Subnet("10.1.0.0", 16)]],
     'set_downstream_subnets {"downstream_subnets":[{"address":"10.1.0.0","prefix_length":16}]}'),
    ("get_adapters", [], "request_networks"),
    ("set_connection_priorities", ["wlan0", z.ConnectionPriority.BACKUP],
     'set_network_priority {"network":"wlan0","priority":2}'),
    ("set_connection_directional_mode",
     ["wlan0", z.ConnectionDirectionalMode.ON, z.ConnectionDirectionalMode.STRICT_OFF],
     'set_network_directional_modes {"download":"strict_off","network":"wlan0","upload":"on"}'),
    ("set_connection_rate_limit", ["wlan0", 1000], 'set_network_ratelimit {"bps":1000,"network":"wlan0"}'),
    ("clear_connection_rate_limit", ["wlan0"], 'set_network_ratelimit {"bps":0,"network":"wlan0"}'),
    ("set_adapter_monthly_data_limit", ["wlan0", 10**10, 5],
     'set_network_limit {"max":10000000000,"network":"wlan0","resetDay":5}'),
    ("clear_adapter_monthly_data_limit", ["wlan0"], 'set_network_limit {"max":0,"network":"wlan0","resetDay":0}'),
    ("set_adapter_daily_data_limit", ["wlan0", 10**9], 'set_network_daily_limit {"max":1000000000,"network":"wlan0"}'),
    ("clear_adapter_daily_data_limit", ["wlan0"], 'set_network_daily_limit {"max":0,"network":"wlan0"}'),
    ("add_adapter_daily_data_limit_boost", ["wlan0", 10**8],
     'add_net_daily_limit_boost {"network":"wlan0","value":100000000}'),
    ("set_adapter_overlimit_ratelimit", ["wlan0", 2000], 'set_network_overlimit_rate {"bps":2000,"network":"wlan0"}'),
    ("reset_adapter_usage", ["wlan0"], 'reset_network_usage {"guid":"wlan0"}'),
    ("get_privacy_settings", [], "request_privacy_settings"),
    ("set_killswitch", [True], 'set_privacy_killswitch {"killswitch":true}'),
    ("set_dns_leak_protection", [True], 'set_privacy_dnsleak {"dnsleak":true}'),
    ("set_ip_leak_protection", [True], 'set_privacy_ipleak {"ipleak":true}'),
    ("set_request_to_disable_doh", [True], 'set_request_to_disable_doh {"request_to_disable_doh":true}'),
    ("set_dns_servers", [["9.9.9.9", "2620:fe::fe"]], 'set_dns_servers {"dns_addresses":["9.9.9.9","2620:fe::fe"]}'),
    ("check_for_captive_portals", [], "check_captive_networks"),
    ("set_captive_portal_login_mode", [True, "wlan0"], 'set_cplogin_enable {"enable":true,"network":"wlan0"}'),
    ("set_captive_portal_login_mode", [False, None], 'set_cplogin_enable {"enable":false}'),
    ("get_firewall_settings", [], "request_firewall_settings"),
    ("set_firewall_mode", [z.FirewallMode.DENY_LIST], 'set_firewall_mode {"mode":"denylist"}'),
    ("set_firewall_domains", [["a.example", "b.example"]],
     'set_firewall_domains {"domains":["a.example","b.example"]}'),
    ("set_firewall_ipv4", [["10.0.0.1"]], 'set_firewall_ipv4 {"ipv4":["10.0.0.1"]}'),
    ("set_firewall_ipv6", [["fe80::1"]], 'set_firewall_ipv6 {"ipv6":["fe80::1"]}'),
    ("set_firewall_ports", [[WEB]], 'set_firewall_ports {"ports":[{"port":80,"portRangeEnd":90,"proto":"tcp"}]}'),
    ("get_streaming_settings", [], "request_streaming_settings"),
    ("set_streaming_domains", [["a.example", "b.example"]],
     'set_streaming_domains {"domains":["a.example","b.example"]}'),
    ("set_streaming_ipv4", [["10.0.0.1"]], 'set_streaming_ipv4 {"ipv4":["10.0.0.1"]}'),
    ("set_streaming_ipv6", [["fe80::1"]], 'set_streaming_ipv6 {"ipv6":["fe80::1"]}'),
    ("set_streaming_ports", [[WEB]], 'set_streaming_ports {"ports":[{"port":80,"portRangeEnd":90,"proto":"tcp"}]}'),
    ("get_local_proxy_settings", [], "request_localproxy_settings"),
    ("set_local_proxy_enabled", [True], 'set_localproxy_enabled {"enabled":true}'),
    ("set_local_proxy_domains", [["a.example", "b.example"]],
     'set_localproxy_domains {"domains":["a.example","b.example"]}'),
    ("set_local_proxy_ipv4", [["10.0.0.1"]], 'set_localproxy_ipv4 {"ipv4":["10.0.0.1"]}'),
    ("set_local_proxy_ipv6", [["fe80::1"]], 'set_localproxy_ipv6 {"ipv6":["fe80::1"]}'),
    ("set_local_proxy_ports", [[WEB]], 'set_localproxy_ports {"ports":[{"port":80,"portRangeEnd":90,"proto":"tcp"}]}'),
    ("set_local_proxy_global_domain_watchlist_enable", [True], 'set_localproxy_bypass {"watchlistEnabled":true}'),
    ("set_local_proxy_domain_watchlist_enable", ["Netflix", True],
     'set_localproxy_domainwatchlist_enable {"enabled":true,"title":"Netflix"}'),
    ("get_speed_test_results", [], "request_speedtest_results"),
    ("start_speed_test", [], "speedtest"),
    ("start_stream_test", [], "streamtest"),
    ("get_last_disconnect_event", [], "request_disconnect_reason"),
    ("get_log_settings", [], "request_log_settings"),
    ("set_daemon_log_settings", [z.DaemonLogSettings(1, 2, 3, z.DaemonLogLevel.WARN)],
     'set_daemon_log_settings {"daemon":{"file_size":1,"files_per_daemon":2,"log_level":"warn","total_files":3}}'),
    ("send_log_report", ["a@example.com", "text", __file__],
     'send_log_report {"email":"a@example.com","filename":"<FILE>","message":"text"}'),
    ("erase_logs", [], "erase_all_log_files"),
    ("init_safe_browsing", ["conf"], 'initialize_safe_browsing {"config":"conf"}'),
    ("set_safe_browsing_config", ["conf"], 'set_safe_browsing_config {"config":"conf"}'),
    ("set_safe_browsing_enabled", [True], 'enable_safe_browsing {"enable":true}'),
    ("set_safe_browsing_log_level", [z.SafeBrowsingLogLevel.TRACE],
     'set_safe_browsing_log_level {"log_level":"trace"}'),
    ("set_safe_browsing_safe_network_override", [z.SafeBrowsingSafeNetworkOverride.SAFE],
     'set_safe_browsing_safe_network_override {"network_override":"safe"}'),
    ("refresh_safe_browsing_token", ["token"], 'safe_browsing_token_refresh {"token":"token"}'),
    ("report_safe_browsing_home_network", [1, 2, 3],
     'safe_browsing_report_home_network {"delay":2,"retries":1,"timeout":3}'),
    ("get_safe_browsing", [], "request_safe_browsing_settings"),
    ("get_safe_browsing_stats", [], "request_safe_browsing_stats"),
    ("get_network_sharing_settings", [], "request_networksharing_settings"),
    ("set_network_sharing_client_enabled", [True], 'set_networksharing_client_enabled {"client_enabled":true}'),
    ("set_network_sharing_host_enabled", [True]),
    ("set_network_sharing_display_name", ["here"], 'set_networksharing_display_name {"display_name":"here"}'),
    ("set_network_sharing_pair_request_behavior", [z.NetworkSharingPairRequestBehavior.ACCEPT],
     'set_networksharing_pair_request_behavior {"pair_request_behavior":"accept"}'),
    ("set_network_sharing_auto_pair_behavior", [z.NetworkSharingAutoPairBehavior.AUTO_USER_TEAM],
     'set_networksharing_auto_pair_behavior {"auto_pair_behavior":"auto_user_team"}'),
    ("set_network_sharing_always_on_discovery", [True],
     'set_networksharing_always_on_discovery {"always_on_discovery":true}'),
    ("get_network_sharing_discovery", [], "get_networksharing_discovery"),
    ("start_network_sharing_discovery", [], "start_networksharing_discovery"),
    ("get_network_shares_available", [], "request_networksharing_sharesavailable"),
    ("connect_to_network_share_via_connect_code", [CODE],
     'connect_to_networkshare_connectcode {"connect_code":"<CODE>"}'),
    ("reconnect_to_network_share", [ANN], 'reconnect_to_networkshare {"uuid":"<ANN>"}'),
    ("request_network_sharing_pair", [BOB], 'request_networksharing_pair {"uuid":"<BOB>"}'),
    ("allow_network_sharing_pair", [BOB, True], 'allow_networksharing_pair {"allow":true,"uuid":"<BOB>"}'),
    ("unpair_network_sharing_peer", [BOB], 'unpair_networksharing_peer {"uuid":"<BOB>"}'),
    ("set_network_sharing_peer_auto_reconnect", [ANN, True],
     'set_networksharing_peer_auto_reconnect {"allow":true,"uuid":"<ANN>"}'),
    ("set_network_sharing_peer_allow_as_host", [ANN, True],
     'set_networksharing_peer_allow_as_host {"allow":true,"uuid":"<ANN>"}'),
    ("set_network_sharing_peer_allow_as_client", [ANN, False],
     'set_networksharing_peer_allow_as_client {"allow":false,"uuid":"<ANN>"}'),
    ("login_oauth", ["demo-token"], 'login_oauth {"oauth":"demo-token"}'),
    ("refresh_oauth_token", ["demo-token"], 'update_oauth {"oauth":"demo-token"}'),
    ("login_auto_account", [], "allow_auto_account", "login_auto"),
    ("logout", [], "logout", "request_current_state"),
    ("exit_daemon", [], "exit"),
]

REFUSED = {
    "set_enable_default_route": z.ErrorCode.LOCKED_BY_SERVER,
    "set_network_sharing_host_enabled": z.ErrorCode.NOT_SUPPORTED,
    "allow_network_sharing_pair": z.ErrorCode.DAEMON_INVALID_ARGUMENT,
}

# A field of the method's result, for the arguments above.
RESULTS = {
    "connect_to_city": ("server.city", "nyc"),
    "set_connect_method_exact_server": ("num", 2),
    "set_mode": ("bonding_mode", z.BondingMode.STREAMING),
    "set_overflow_threshold": ("overflow_threshold", 1.5),
    "set_forward_ports": ("forwarded_ports", [DNS]),
    "set_downstream_subnets": ("downstream_subnets", [z.Subnet("10.1.0.0", 16)]),
    "set_dns_servers": ("dns_addresses", ["9.9.9.9", "2620:fe::fe"]),
    "set_firewall_domains": ("domains", ["a.example", "b.example"]),
    "set_firewall_ipv4": ("ipv4", ["10.0.0.1"]),
    "set_firewall_ipv6": ("ipv6", ["fe80::1"]),
    "set_streaming_ports": ("ports", [WEB]),
    "set_daemon_log_settings": ("daemon", z.DaemonLogSettings(1, 2, 3, z.DaemonLogLevel.WARN)),
    "send_log_report": ("ticket_id", "ZS-10001"),
    "login_auto_account": ("state", z.State.LOGGED_IN),
    "logout": ("state", z.State.LOGGED_OUT),
}


def expected(request):
    """Returns a request as the simulator prints it."""
    for place, value in PLACES.items():
        request = request.replace(place, value)
    return tuple(request.split(" ", 1)) if " " in request else (request, "null")


def has_type(value, hint):
    if typing.get_origin(hint) is list:
        (element,) = typing.get_args(hint)
        return type(value) is list and all(has_type(each, element) for each in value)
    return type(value) is hint


def check_types(record):
    """Checks that each field has exactly its declared type."""
    hints = typing.get_type_hints(type(record), vars(_types))
    for each in dataclasses.fields(record):
        value = getattr(record, each.name)
        assert has_type(value, hints[each.name]), f"{type(record).__name__}.{each.name} is {value!r}"
        for inner in value if isinstance(value, list) else [value]:
            if dataclasses.is_dataclass(inner):
                check_types(inner)


def field_of(record, path):
    for name in path.split("."):
        record = getattr(record, name)
    return record


def test_every_method_sends_its_arguments_and_returns_its_record(simulator):
    with z.Client(port=simulator.port) as client:
        for method, arguments, *requests in CALLS:
            before = len(simulator.requests)
            result, code = None, None
            try:
                result = getattr(client, method)(*arguments)
            except z.Error as error:
                code = error.code
            assert code == REFUSED.get(method), method
            wait_until(lambda: len(simulator.requests) - before >= len(requests))
            for got, wanted in zip(simulator.requests[before:], map(expected, requests)):
                assert got[0] == wanted[0] and wanted[1] in (got[1], "..."), method
            if dataclasses.is_dataclass(result):
                check_types(result)
            if method in RESULTS:
                path, value = RESULTS[method]
                assert field_of(result, path) == value, method


def test_the_table_has_every_method():
    methods = {name for name, _ in inspect.getmembers(z.Client, inspect.isfunction) if not name.startswith("_")}
    subscriptions = {name for name in methods
                     if "maxsize" in inspect.signature(getattr(z.Client, name)).parameters}
    assert methods - subscriptions - {"close"} == {row[0] for row in CALLS}
    # Every function of the library with an object has a method.
    header = (ROOT / "include/zephlinksdk/zephlinksdk.h").read_text()
    declared = set(re.findall(r"^ZephlinkSDK_\w*Result (ZephlinkSDK_\w+)\(", header, re.MULTILINE))
    listeners = {name for name in subscriptions if name.startswith("listen_for_")}
    assert len({row[0] for row in CALLS} | listeners) == len(declared)


def test_history_is_a_list_of_samples(daemon, client):
    sample = {"eth0": {"tcp": "10" + "0" * 15 + "9" + "0" * 20 + "0000"}}
    data = [{"time": time, "connections": sample} for time in (1, 2, 2)]
    daemon.answer = lambda name, members: [("report_historic_connection_stats", data)]
    history = client.get_historic_connection_stats()
    assert [each.time for each in history] == [1, 2, 2]
    assert history[0].connections[0].total_bps == 9
    daemon.answer = lambda name, members: [("report_historic_connection_stats", [])]
    assert client.get_historic_connection_stats() == []
    data[1]["connections"] = {"eth0": {"tcp": "1"}}
    daemon.answer = lambda name, members: [("report_historic_connection_stats", data)]
    with pytest.raises(z.Error) as raised:
        client.get_historic_connection_stats()
    assert raised.value.code == z.ErrorCode.SDK


def test_records_are_read_only_values(daemon, client):
    first, second = client.get_directory(), client.get_directory()
    assert first == second and len(first.servers) == 39
    with pytest.raises(dataclasses.FrozenInstanceError):
        first.servers[0].city = "nowhere"
    assert dataclasses.replace(first.servers[0], num=7).num == 7
    assert pickle.loads(pickle.dumps(first)) == first
    assert [pickle.loads(pickle.dumps(z.State(value))).name for value in (6, 77)] == ["CONNECTED", "UNLISTED_77"]


def test_texts_and_numbers_that_no_daemon_should_send(daemon, client):
    daemon.answer = lambda name, members: [("report_networks", [{"guid": "\u00e4" * 60, "name": "a\u0000b"}] * 40)]
    adapters = client.get_adapters().adapters
    assert len(adapters) == 25
    assert adapters[0].adapter_id == "\u00e4" * 49
    assert z.State(77).name == "UNLISTED_77" and z.State(77) == 77
    with pytest.raises(ValueError):
        z.State(-1)


def test_layouts_are_those_of_the_library():
    rows = re.findall(r"^LAYOUT\w*\((\w+), (\d+), (\w+), (\d+)\);", (ROOT / "sdk/layout.h").read_text(), re.MULTILINE)
    assert len(rows) > 40
    for record, size, last, offset in rows:
        c_type = _native.ffi.typeof(record)
        assert (_native.ffi.sizeof(c_type), _native.ffi.offsetof(c_type, last)) == (int(size), int(offset)), record


def test_words():
    enumerations = [each for each in vars(z).values() if isinstance(each, type) and issubclass(each, enum.IntEnum)]
    assert len(enumerations) >= 27
    for each in enumerations:
        if each in (z.ErrorCode, z.SessionStatus):  # zephctl has no words for these
            continue
        for member in each:
            if member is not z.State.UNKNOWN:  # its word is for output only
                assert each.from_text(member.text) is member
        with pytest.raises(ValueError):
            each.from_text("no such word")
    assert [each.text for each in z.SessionStatus] == ["connecting", "live", "quiet", "unreachable", "mute"]
    assert z.State.OVER_LIMIT.text == "OVERLIMIT" and z.Period(5).text == "" and z.Period.TOTAL == 2**32 - 1
    assert z.country_name("us") == "United States" and z.city_name("no-such") == "{{LOCATION.CITY.no-such}}"
    assert z.is_transport_setting(z.TransportMode.TCP) and not z.is_transport_setting(z.TransportMode.PROXY)


def test_docstrings_speak_python():
    documented = [member for _, member in inspect.getmembers(z.Client, inspect.isfunction)]
    documented += [member for name, member in vars(z).items() if name in z.__all__]
    for member in documented:
        if not member.__name__.startswith("_"):
            text = inspect.getdoc(member)
            assert text and not re.search(r"ZephlinkSDK_|callback|\bnull\b|userData|hasError", text), member
    assert "`adapter_id` may be None" in z.Client.set_captive_portal_login_mode.__doc__
    assert json.dumps(z.Client.set_mode.__annotations__) == '{"mode": "BondingMode", "return": "SettingsResult"}'
