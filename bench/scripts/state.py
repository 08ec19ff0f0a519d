"""Does the same as `zephctl state` with Python's websockets: state.py PORT."""

import asyncio
import json
import sys

import websockets


async def main():
    uri = f"ws://127.0.0.1:{sys.argv[1]}/"
    async with websockets.connect(uri, subprotocols=["event-protocol"]) as link:
        for event, members in (("set_app_name", {"name": "Zephlink"}), ("request_current_state", None)):
            await link.send(json.dumps([event, members, "zephlink_sdk"]) + "\n")
        async for message in link:
            event, members, _ = json.loads(message)
            if event == "report_current_state":
                print(json.dumps(members, indent="\t"))
                return


asyncio.run(main())
