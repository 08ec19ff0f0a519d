"""ZephlinkSDK for Python: a client of the daemon that bonds this machine's network adapters into one tunnel.

    with zephlink.Client() as client:
        print(client.get_state().state.name)
        for report in client.subscribe_connection_stats():
            print(sum(each.receive_bps for each in report.connections))
"""

try:
    from zephlink import _native as _native
except ImportError as error:
    from zephlink._missing import explained

    raise explained(error) from error

from zephlink import _types
from zephlink._client import Client as Client
from zephlink._client import Session as Session
from zephlink._connection import Subscription as Subscription
from zephlink._convert import Record as Record
from zephlink._error import ClosedError as ClosedError
from zephlink._error import Error as Error
from zephlink._types import *  # noqa: F403

__all__ = ["Client", "ClosedError", "Error", "Record", "Session", "Subscription", *_types.__all__]

# Users find the names here: in messages, in pickles and in help().
for _name in __all__:
    globals()[_name].__module__ = __name__
