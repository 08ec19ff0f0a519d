"""For cron: prints each adapter that has used most of its monthly data; exits with status 1 if there is one."""

import argparse
import sys
from typing import Iterator

import zephlink


def warnings(adapters: zephlink.AdaptersResult, share: float) -> Iterator[str]:
    for each in adapters.adapters:
        if each.usage_monthly_limit > 0 and each.usage_monthly >= share * each.usage_monthly_limit:
            used, limit = each.usage_monthly / 1e9, each.usage_monthly_limit / 1e9
            yield f"{each.name} ({each.adapter_id}) has used {used:.2f} of {limit:.2f} GB"


def main() -> int:
    parser = argparse.ArgumentParser(description="Prints the adapters whose monthly data are nearly used up.")
    parser.add_argument("--port", type=int, help="of the daemon (default: 9330)")
    parser.add_argument("--percent", type=float, default=80, help="of the limit (default: 80)")
    options = parser.parse_args()
    try:
        with zephlink.Client(port=options.port) as client:
            adapters = client.get_adapters()
    except zephlink.Error as error:
        print("zephlink:", error.text, file=sys.stderr)
        return 2
    found = list(warnings(adapters, options.percent / 100))
    print(*found, sep="\n", end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
