"""Small pieces of C++ text."""


def literal(text: str) -> str:
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def text(value: str) -> str:
    return f"ORV_TEXT({literal(value)})"


def name(value: str) -> str:
    return f"ORV_NAME({literal(value)}, {literal(value.lower())})"


def hexadecimal(value: int) -> str:
    return f"0x{value:x}" if value else "0"
