"""Prints the traffic of each adapter once a second until Ctrl-C. The argument is the daemon's port."""

import sys

import zephlink


def main() -> None:
    port = int(sys.argv[1]) if len(sys.argv) > 1 else None
    with zephlink.Session(port=port) as session:
        reports = session.subscribe_connection_stats()
        while True:
            try:
                report = reports.get(timeout=4)
            except TimeoutError:
                print("The daemon is", session.status.text, flush=True)
                continue
            for each in report.connections:
                print(f"{each.adapter_id:10} {each.receive_bps / 1e6:8.2f} Mbit/s down"
                      f" {each.send_bps / 1e6:8.2f} Mbit/s up", flush=True)


if __name__ == "__main__":
    try:
        main()
    except KeyboardInterrupt:
        pass
