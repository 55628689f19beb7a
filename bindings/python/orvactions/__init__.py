"""The action library: actions, match actions, event databases and the catalogue.

    >>> import orvactions as orv
    >>> orv.Action("PanLeft", Camera=7, Speed=3).to_text()
    'PanLeft (Camera: 7, Speed: 3)'
"""

import datetime
from uuid import UUID

from . import actions, catalogue, enums, events
from ._interface import VERSION as __version__
from .action import Action, MatchAction
from .errors import BusyError, Error
from .forms import from_bytes, from_dict, parse, parse_many, read_frames, write_frames
from .rules import RuleSet
from .values import Channel, DataItem, DataSet, Date, EventType, Kind, RawDate, Rect, Resource, Value

# datetime and UUID stand here for the text of repr().
__all__ = [
    "Action", "BusyError", "Channel", "DataItem", "DataSet", "Date", "Error", "EventType", "Kind", "MatchAction",
    "RawDate", "Rect", "Resource", "RuleSet", "UUID", "Value", "__version__", "actions", "catalogue", "datetime",
    "enums", "events", "from_bytes", "from_dict", "parse", "parse_many", "read_frames", "write_frames",
]
