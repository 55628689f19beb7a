"""Small pieces of C++ text."""


def literal(text: str) -> str:
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def hexadecimal(value: int) -> str:
    return f"0x{value:x}" if value else "0"
