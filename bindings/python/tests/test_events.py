"""Subscriptions: queues, ends, and asyncio."""

import asyncio
import threading
import time

import pytest
import zephlink as z
from conftest import wait_until

BLOCK = "report_safe_browsing_block"


def hosts(count):
    return [{"host": f"{number}.example", "redirected": False} for number in range(count)]


def numbers(records):
    return [int(record.host.split(".")[0]) for record in records]


def next_of(subscription, count):
    return [subscription.get(20) for _ in range(count)]


def connected(client, subscription):
    """Returns the subscription once the daemon has a connection."""
    client.get_state()
    return subscription


def test_ten_thousand_events_in_order(daemon, client):
    events = connected(client, client.listen_for_safe_browsing_block(maxsize=10000))
    daemon.send(BLOCK, *hosts(10000))
    assert numbers(next_of(events, 10000)) == list(range(10000))
    assert events.dropped == 0


def test_a_full_queue_drops_the_oldest_and_logs_it(daemon, client, caplog):
    events = connected(client, client.listen_for_safe_browsing_block(maxsize=10))
    daemon.send(BLOCK, *hosts(1000))
    wait_until(lambda: events.dropped == 990)
    assert numbers(next_of(events, 10)) == list(range(990, 1000))
    assert [each.getMessage() for each in caplog.records] == [
        "990 records were dropped: the queue of a subscription was full"]
    # The default is bounded by the memory of its records.
    with client.listen_for_safe_browsing_block() as more, client.subscribe_directory() as large:
        daemon.send(BLOCK, *hosts(1500))
        wait_until(lambda: more.dropped == 500)
        daemon.send("report_directory", *[[]] * 50)
        wait_until(lambda: large.dropped >= 50 - 21)


def test_get_times_out(client):
    events = connected(client, client.listen_for_safe_browsing_block())
    for timeout in (0, 0.05, 0.3):
        start = time.monotonic()
        with pytest.raises(TimeoutError):
            events.get(timeout)
        assert timeout <= time.monotonic() - start < timeout + 2
    with pytest.raises(ValueError):
        client.subscribe_state(maxsize=0)


def test_statistics_are_requested(daemon, client):
    with client.subscribe_connection_stats() as stats:
        assert next(stats).connections[0].adapter_id == "adapter1"
        wait_until(lambda: "stat_subscribe" in daemon.requests)
        client.subscribe_session_stats()
        client.get_state()
        assert daemon.requests.count("stat_subscribe") <= 2  # the library repeats the request


def test_a_record_with_an_error_raises_and_the_subscription_goes_on(daemon, client):
    states = client.subscribe_state()
    assert next(states).state is z.State.CONNECTED
    periods = {"24": {"bytes_recv": 5}}
    stats = client.subscribe_session_stats()
    assert stats.get(10).periods == []
    daemon.send("report_session_stats", {"day": {}}, periods)
    with pytest.raises(z.Error) as raised:
        next(stats)
    assert raised.value.code is z.ErrorCode.SDK
    assert next(stats).periods[0].bytes_received == 5
    # A failure that the daemon reports without failing the call.
    peers = connected(client, client.listen_for_network_share_peer_status_change())
    daemon.send("report_networksharing_peer_status_change", {"uuid": "p-1", "type": 3, "msg": "refused"},
                {"uuid": "p-2"})
    assert [(each.error_code, each.error_message) for each in next_of(peers, 2)] == [(3, "refused"), (0, "")]


def test_the_first_time_out_of_a_subscription(mute):
    with z.Client(port=mute.port) as client:
        states = client.subscribe_state()
        with pytest.raises(z.Error) as raised:
            next(states)
        assert raised.value.code is z.ErrorCode.TIMEOUT
        mute.send("report_current_state", {"state": 2})
        assert next(states).state is z.State.LOGGED_IN


@pytest.mark.parametrize("whose", ["subscription", "client"])
def test_close_in_the_middle_of_a_wait(client, whose):
    events = connected(client, client.listen_for_safe_browsing_block())
    got = []
    threads = [threading.Thread(target=lambda: got.append(list(events))) for _ in range(5)]
    for thread in threads:
        thread.start()
    (events if whose == "subscription" else client).close()
    for thread in threads:
        thread.join(10)
    assert got == [[]] * 5
    with pytest.raises(z.ClosedError):
        events.get()


def test_closing_ends_the_listener(daemon, client):
    with connected(client, client.listen_for_safe_browsing_block()) as events:
        daemon.send(BLOCK, *hosts(3))
        assert numbers(next_of(events, 3)) == [0, 1, 2]
        daemon.send(BLOCK, *hosts(3))
    assert list(events) == []


def test_asyncio(daemon, client):
    async def take(count, events):
        got = []
        async for record in events:
            got.append(record)
            if len(got) == count:
                return got

    async def run():
        events = connected(client, client.listen_for_safe_browsing_block(maxsize=10000))
        loop = asyncio.get_running_loop()
        ticks = []

        async def tick():
            while True:
                ticks.append(1)
                await asyncio.sleep(0)

        ticking = asyncio.create_task(tick())
        sending = loop.run_in_executor(None, daemon.send, BLOCK, *hosts(1000))
        # Two tasks share the events.
        first, second = await asyncio.wait_for(asyncio.gather(take(400, events), take(600, events)), 20)
        await sending
        assert sorted(numbers(first + second)) == list(range(1000)) and ticks
        ticking.cancel()

        # A cancelled wait loses no event.
        with pytest.raises(asyncio.TimeoutError):
            await asyncio.wait_for(events.__anext__(), 0.05)
        await loop.run_in_executor(None, daemon.send, BLOCK, *hosts(2))
        assert numbers(await take(2, events)) == [0, 1]

        # Closing from another thread ends the loop.
        waiting = asyncio.create_task(take(1, events))
        await asyncio.sleep(0)
        await loop.run_in_executor(None, events.close)
        assert await asyncio.wait_for(waiting, 10) is None

        # A blocking call on a thread of asyncio.
        assert (await asyncio.to_thread(client.get_state)).state is z.State.CONNECTED

    asyncio.run(run())
