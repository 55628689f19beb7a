"""The binary form of an action, written and read in Python.

One call that hands over the whole form costs less than a call for each parameter, so actions are made and taken apart
through it. What is not sound here is left to the library, which knows what a buffer that ends too early still holds.
"""

from struct import Struct, error as StructError
from typing import Any, Callable, Dict, List, NamedTuple, Optional, Tuple
from uuid import UUID

from . import enums
from ._library import text_of, wide
from .values import Channel, DataSet, Date, EventType, Kind, Rect, RawDate, Resource, date_of, word_of

ACTION, MATCH_ACTION = 3, 4

_u32 = Struct("<I")
_two = Struct("<II")
_i32 = Struct("<i")
_i64 = Struct("<q")
_u64 = Struct("<Q")
_f64 = Struct("<d")
_channel = Struct("<QI")
_rect = Struct("<4h")

Encoder = Callable[[Any], bytes]
Decoder = Callable[[bytes, int], Tuple[Any, int]]


class Item(NamedTuple):
    """A parameter as the binary form holds it."""

    name: str
    kind: int
    enum_id: int
    value: Any


class Image(NamedTuple):
    kind: int
    name: str
    items: List[Item]


class Unsound(ValueError):
    """Not the whole binary form of one action, or one with values that only the library takes apart."""


def text(value: str) -> bytes:
    units = wide(value)
    return _u32.pack(len(units) // 2) + units


# ---- writing ----


def _refuse(value: object, what: str) -> TypeError:
    return TypeError(f"{what} is expected, not {type(value).__name__}")


def _boolean(value: Any) -> bytes:
    if value is True or value is False:
        return _i32.pack(value)
    raise _refuse(value, "a bool")


def _number(packer: Struct, low: int, high: int) -> Encoder:
    def encode(value: Any) -> bytes:
        if not isinstance(value, int) or isinstance(value, bool):
            raise _refuse(value, "an int")
        if not low <= value <= high:
            raise ValueError(f"{value} does not fit {packer.size * 8} bits")
        return packer.pack(value)

    return encode


_int32 = _number(_i32, -(1 << 31), (1 << 31) - 1)


def _word32(value: Any) -> bytes:
    # Masks and colours are written as unsigned numbers; the bits are the same.
    if isinstance(value, int) and value >> 31 == 1:
        return _u32.pack(value)
    return _int32(value)


def _real(value: Any) -> bytes:
    if isinstance(value, float) or (isinstance(value, int) and not isinstance(value, bool)):
        return _f64.pack(value)
    raise _refuse(value, "a float")


def _string(value: Any) -> bytes:
    if not isinstance(value, str):
        raise _refuse(value, "a str")
    return text(value)


def _guid(value: Any) -> bytes:
    if not isinstance(value, UUID):
        raise _refuse(value, "a UUID")
    return value.bytes_le


def event_type_of(value: Any) -> EventType:
    """An event type out of a name or an id."""
    if isinstance(value, EventType):
        return value
    if isinstance(value, str):
        return EventType(value)
    if isinstance(value, int) and not isinstance(value, bool):
        return EventType(id=value)
    raise _refuse(value, "an EventType, a name or an id")


def channel_of(value: Any) -> Channel:
    """A channel out of a number or a name."""
    if isinstance(value, Channel):
        return value
    if isinstance(value, str):
        return Channel(name=value)
    if isinstance(value, int) and not isinstance(value, bool):
        return Channel(value)
    raise _refuse(value, "a Channel, a number or a name")


def resource_of(value: Any) -> Resource:
    """A resource out of a name or a guid."""
    if isinstance(value, Resource):
        return value
    if isinstance(value, str):
        return Resource(value)
    if isinstance(value, UUID):
        return Resource(guid=value)
    raise _refuse(value, "a Resource, a name or a UUID")


def rect_of(value: Any) -> Rect:
    if isinstance(value, Rect):
        return value
    if isinstance(value, tuple) and len(value) == 4:
        return Rect(*value)
    raise _refuse(value, "a Rect or four numbers")


_packed_u64 = _number(_u64, 0, (1 << 64) - 1)
_packed_u32 = _number(_u32, 0, (1 << 32) - 1)
_packed_i16 = _number(Struct("<h"), -(1 << 15), (1 << 15) - 1)


def _event_type(value: Any) -> bytes:
    value = event_type_of(value)
    return text(value.name) + _packed_u64(value.id)


def _media_channel(value: Any) -> bytes:
    if type(value) is int and 0 <= value < 1 << 32:
        return b"\1\0\0\0\0\0" + _channel.pack(0, value)
    value = channel_of(value)
    return text(value.name) + _packed_u64(value.id) + _packed_u32(value.number)


def _resource(value: Any) -> bytes:
    value = resource_of(value)
    return text(value.name) + _guid(value.guid)


def _rectangle(value: Any) -> bytes:
    value = rect_of(value)
    return b"".join(map(_packed_i16, (value.top, value.left, value.bottom, value.right)))


_packed_u16 = _number(Struct("<H"), 0, (1 << 16) - 1)
_packed_field4 = _number(_i32, 0, (1 << 31) - 1)


def _data_set(value: Any) -> bytes:
    if not isinstance(value, DataSet):
        raise _refuse(value, "a DataSet")
    for item in value.items:
        for encode, number in ((_packed_u16, item.field0), (_packed_u16, item.field1), (_packed_i16, item.field2),
                               (_packed_i16, item.field3)):
            encode(number)
        # The library writes a negative one as a number that it does not read.
        _packed_field4(item.field4)
        _string(item.name)
    return text("")  # filled by the library afterwards


ENCODERS: Dict[int, Encoder] = {
    Kind.Boolean: _boolean, Kind.Numeric32Bit: _word32, Kind.Numeric64Bit: _number(_i64, -(1 << 63), (1 << 63) - 1),
    Kind.NumericDouble: _real, Kind.String: _string, Kind.DateTime: lambda value: _u64.pack(word_of(value)),
    Kind.Guid: _guid, Kind.EventType: _event_type, Kind.MediaChannel: _media_channel, Kind.Resource: _resource,
    Kind.Rect: _rectangle, Kind.ResultDataSet: _data_set,
}


def kind_of(value: Any) -> int:
    """The kind of a value for which the catalogue declares none."""
    for kind, types in _BY_TYPE:
        if isinstance(value, types):
            wide_number = kind == Kind.Numeric32Bit and not -(1 << 31) <= value < 1 << 31
            return Kind.Numeric64Bit if wide_number else kind
    raise _refuse(value, "a value")


def _date_types() -> Tuple[type, ...]:
    from datetime import datetime

    return (datetime, RawDate)


_BY_TYPE: Tuple[Tuple[int, Any], ...] = (
    (Kind.Boolean, bool), (Kind.Numeric32Bit, int), (Kind.NumericDouble, float), (Kind.String, str),
    (Kind.DateTime, _date_types()), (Kind.Guid, UUID), (Kind.EventType, EventType), (Kind.MediaChannel, Channel),
    (Kind.Resource, Resource), (Kind.Rect, (Rect, tuple)), (Kind.ResultDataSet, DataSet),
)

# ---- reading ----


_bare = object.__new__


def _read_text(data: bytes, at: int) -> Tuple[str, int]:
    count = _u32.unpack_from(data, at)[0]
    end = at + 4 + 2 * count
    if end > len(data) or count == 0:
        raise Unsound
    if count == 1:
        return "", end
    return data[at + 4 : end - 2].decode("utf-16-le", "surrogatepass"), end


def _plain(packer: Struct) -> Decoder:
    unpack, size = packer.unpack_from, packer.size
    return lambda data, at: (unpack(data, at)[0], at + size)


def _read_boolean(data: bytes, at: int) -> Tuple[bool, int]:
    return _i32.unpack_from(data, at)[0] != 0, at + 4


def _read_date(data: bytes, at: int) -> Tuple[Date, int]:
    return date_of(_u64.unpack_from(data, at)[0]), at + 8


def _read_guid(data: bytes, at: int) -> Tuple[UUID, int]:
    if at + 16 > len(data):
        raise Unsound
    return UUID(bytes_le=data[at : at + 16]), at + 16


def _read_event_type(data: bytes, at: int) -> Tuple[EventType, int]:
    name, at = _read_text(data, at)
    return EventType(name, _u64.unpack_from(data, at)[0]), at + 8


def _read_channel(data: bytes, at: int) -> Tuple[Channel, int]:
    name, at = _read_text(data, at)
    number_id, number = _channel.unpack_from(data, at)
    channel = _bare(Channel)  # twice as fast as the constructor of a frozen class, and channels are everywhere
    channel.__dict__.update(number=number, name=name, id=number_id)
    return channel, at + 12


def _read_resource(data: bytes, at: int) -> Tuple[Resource, int]:
    name, at = _read_text(data, at)
    guid, at = _read_guid(data, at)
    return Resource(name, guid), at


def _read_rect(data: bytes, at: int) -> Tuple[Rect, int]:
    return Rect(*_rect.unpack_from(data, at)), at + 8


def _read_data_set(data: bytes, at: int) -> Tuple[Any, int]:
    value, at = _read_text(data, at)
    if value:
        raise Unsound  # its text is the library's to read
    return DataSet(), at


DECODERS: Dict[int, Decoder] = {
    Kind.Boolean: _read_boolean, Kind.Numeric32Bit: _plain(_i32), Kind.Numeric64Bit: _plain(_i64),
    Kind.NumericDouble: _plain(_f64), Kind.String: _read_text, Kind.DateTime: _read_date, Kind.Guid: _read_guid,
    Kind.EventType: _read_event_type, Kind.MediaChannel: _read_channel, Kind.Resource: _read_resource,
    Kind.Rect: _read_rect, Kind.ResultDataSet: _read_data_set,
}

# What comes before a payload, by its bytes: few differ, so most are found here. Hostile data cannot fill it.
_heads: Dict[bytes, Tuple[str, int, int, Decoder]] = {}
_names: Dict[bytes, str] = {}
_MOST = 8192


def _head(data: bytes) -> Tuple[str, int, int, Decoder]:
    kind, enum_id = _two.unpack_from(data, len(data) - 8)
    decoder = DECODERS.get(kind)
    if decoder is None:
        raise Unsound
    if kind == Kind.Numeric32Bit and enum_id in enums.BY_ID:
        decoder = _enum_decoder(enums.BY_ID[enum_id])
    row = (text_of(data[4:-10]), kind, enum_id, decoder)
    if len(_heads) < _MOST and len(data) < 256:
        _heads[data] = row
    return row


def _enum_decoder(kind: Any) -> Decoder:
    members = {int(it): it for it in kind}

    def decode(data: bytes, at: int) -> Tuple[int, int]:
        value = _i32.unpack_from(data, at)[0]
        return members.get(value, value), at + 4

    return decode


def enum_value(value: int, enum_id: int) -> int:
    """The member of an enum where there is one."""
    kind = enums.BY_ID.get(enum_id)
    try:
        return value if kind is None else kind(value)
    except ValueError:
        return value


def _name(data: bytes) -> str:
    name = _names.get(data)
    if name is None:
        name = text_of(data)
        if len(_names) < _MOST and len(data) < 256:
            _names[data] = name
    return name


def read(data: bytes) -> Tuple[Image, int]:
    """The first action of a buffer and where it ends; raises Unsound for what the library has to read."""
    try:
        return _read(data)
    except StructError:
        raise Unsound from None


def _read(data: bytes, heads: Any = _heads.get, unpack: Any = _two.unpack_from,
          new: Any = tuple.__new__) -> Tuple[Image, int]:
    kind, units = unpack(data, 0)
    at = 8 + 2 * units
    if units == 0 or at > len(data):
        raise Unsound
    name = _name(data[8 : at - 2])
    count = _u32.unpack_from(data, at)[0]
    at += 4
    items: List[Item] = []
    for _ in range(count):
        units, _unused = unpack(data, at)
        end = at + 12 + 2 * units
        if units == 0 or end > len(data):
            raise Unsound
        head = data[at:end]
        label, item_kind, enum_id, decode = heads(head) or _head(head)
        value, at = decode(data, end)
        if at > len(data):
            raise Unsound
        items.append(new(Item, (label, item_kind, enum_id, value)))
    return Image(kind, name, items), at


def written(kind: int, name: bytes, parts: List[bytes], count: int, description: Optional[str] = None) -> bytes:
    """A buffer out of the coded name and the records."""
    if kind == MATCH_ACTION:
        comment = text("Comment") + _two.pack(Kind.String, 0) + text(description or "")
        return b"".join([_u32.pack(kind), name, _u32.pack(count + 1), comment, *parts])
    return b"".join([_u32.pack(kind), name, _u32.pack(count), *parts])


def head(name: str, kind: int, enum_id: int) -> bytes:
    return text(name) + _two.pack(kind, enum_id)
