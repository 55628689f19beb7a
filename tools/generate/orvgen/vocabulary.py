"""The fixed words of the catalogue and their numbers, as the library's own lookups know them."""

TYPES: dict[str, int] = {
    "Bool": 1,
    "Int32": 2,
    "Int64": 3,
    "Double": 4,
    "String": 5,
    "DateTime": 6,
    "Guid": 7,
    "EventType": 8,
    "MediaChannel": 9,
    "Resource": 10,
    "Rect": 11,
    "ResultDataSet": 12,
}

# Types whose name in the data differs from that of their kind in the interface, ORV_KIND_....
PUBLIC_KINDS: dict[str, str] = {
    "Bool": "Boolean",
    "Int32": "Numeric32Bit",
    "Int64": "Numeric64Bit",
    "Double": "NumericDouble",
}

# The columns that parameters of these names fill on any action, unless a declared parameter has taken them.
GENERAL_COLUMNS: dict[str, str] = {
    "User1": "FirstUser",
    "User2": "SecondUser",
    "ClientHost": "WindowsHost",
    "ClientAccount": "WindowsUser",
}

# A parameter that takes its values from an enum is stored as a number.
ENUM_STORAGE_TYPE = TYPES["Int32"]

# ABSource and AILogicRule joined late and took the numbers that were free.
VIEWS: dict[str, int] = {
    "Unavailable": 0,
    "UserName": 1,
    "DeviceType": 2,
    "DeviceName": 3,
    "VideoInput": 4,
    "VideoOutput": 5,
    "InputContact": 6,
    "OutputContact": 7,
    "PTZHead": 8,
    "TimeRange": 9,
    "Event": 10,
    "AudioInput": 11,
    "AudioOutput": 12,
    "ADParameterSet": 13,
    "VMDParameterSet": 14,
    "WindowsError": 15,
    "DeviceSubType": 16,
    "ForeignKey": 17,
    "SVParameterSet": 18,
    "ObtrackParameterSet": 19,
    "ABDestination": 20,
    "ABSchedule": 21,
    "HardwareModule": 22,
    "CameraProfile": 23,
    "VantikParameterSet": 24,
    "ImexDestination": 25,
    "ABSource": 26,
    "AILogicRule": 27,
}

COLUMNS: dict[str, int] = {
    name: 1 << bit
    for bit, name in enumerate(
        [
            "Int32_A", "Int32_B", "Int32_C", "Int32_D",
            "Int64_A", "Int64_B", "Int64_C", "Int64_D",
            "String_A", "String_B", "String_C", "String_D",
            "Double_A", "Double_B", "Time_A", "Time_B",
            "FirstUser", "SecondUser", "WindowsHost", "WindowsUser",
        ]
    )
}

DEFAULT_PRIORITY = 5

BOOLEAN_ENUM_ID = 1
ENUM_ID_BIT = 0x1000

# Codes from here on belong to XML extensions.
FIRST_EXTENSION_ACTION_CODE = 10000
FIRST_EXTENSION_CLASS_CODE = 1000

# An action has no more slots: ParameterMap::kMaximumSlots in src/objects/parameter_map.h. The create functions rely on
# it.
MAX_PARAMETERS = 64


def public_enum_type(enum_id: int) -> int:
    """The number under which callers of the query functions know an enum."""
    return (enum_id & ~ENUM_ID_BIT) + 10
