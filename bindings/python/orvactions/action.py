"""An action, and a match action."""

import ctypes
from keyword import iskeyword
from threading import Lock
from typing import Any, Dict, Iterator, List, Mapping, MutableMapping, Optional, Tuple, Type, TypeVar, cast
from uuid import UUID

from . import _entries, _image
from ._image import ACTION, MATCH_ACTION, Image, Item
from ._interface import TOrvParameterValue, TOrvResultDataItem
from ._library import last_error, operations_of, quick, slow, table_of, taken_string, text_of, wide, wide_at
from .errors import BusyError, Error
from .values import Channel, DataItem, DataSet, EventType, Kind, Rect, Resource, Value, date_of

_from_image = quick("OrvAct_CreateFromBinBuffer")
_from_large_image = slow("OrvAct_CreateFromBinBuffer")
_from_text = quick("OrvAct_CreateFromTextBufferW")
_from_large_text = slow("OrvAct_CreateFromTextBufferW")
_to_image = quick("OrvAct_StoreToBinBuffer")
_to_large_image = slow("OrvAct_StoreToBinBuffer")
_to_text = slow("OrvAct_StoreToTextBufferW")
_to_json = slow("OrvAct_StoreToJson")
_clone = slow("OrvAct_CloneHandle")
_equal = slow("OrvAct_Equal")
_matches = quick("OrvMatchAct_Matches")
_name_of = quick("OrvAct_GetActionNameW")
_template = slow("OrvAct_CreateMatchActionFromTemplate")
_from_template = slow("OrvMatchAct_CreateActionFromTemplate")
_get_value = quick("Talvec_Action_GetParameterByName")
_set_value = quick("Talvec_Action_SetParameterByName")
_get_description = quick("OrvMatchAct_GetDescriptionW")
_set_description = quick("OrvMatchAct_SetDescriptionW")

# From this size on, in bytes, a call gives up the interpreter's lock.
_LARGE = 4096
_ROOM = 1024
_room_type = ctypes.c_char * _ROOM
_units_type = ctypes.c_uint16 * _ROOM

A = TypeVar("A", bound="Action")


def _made_of(data: bytes) -> int:
    """The handle of an action out of its binary form."""
    create = _from_image if len(data) < _LARGE else _from_large_image
    handle = create(data, len(data), 0, None)
    if not handle:
        raise last_error("the action cannot be made")
    return cast(int, handle)


class Action(MutableMapping[str, Value]):
    """An action: a name and typed parameters, which it maps by their names in any case.

        >>> a = Action("PanLeft", Camera=7, Speed=3)
        >>> a["Speed"]
        3

    A parameter that the catalogue declares takes a value of its kind; others keep the kind of what they are given. A
    parameter that is not set is not there. One thread at a time may use an action.
    """

    __slots__ = ("_handle", "_lock", "_entry", "_release", "__weakref__")
    __hash__ = None  # type: ignore[assignment]
    _KIND = ACTION
    _handle: int

    def __init__(self, name: str, /, **parameters: Optional[Value]) -> None:
        self._handle = 0
        self._fill(_entries.by_name(name), parameters)

    def _fill(self, entry: _entries.Entry, parameters: Mapping[str, Optional[Value]], description: str = "") -> None:
        parts: List[bytes] = []
        sets: List[str] = []
        count = 0
        slots = entry.by_spelling
        for name, value in parameters.items():
            if value is None:
                continue
            slot = slots.get(name) or entry.slot(name)
            if slot is None:
                kind = _image.kind_of(value)
                enum_id = _enum_of(value)
                parts += (_image.head(name, kind, enum_id), _image.ENCODERS[kind](value))
            else:
                kind = slot.kind
                try:
                    parts += (slot.head, slot.encode(value))
                except (TypeError, ValueError) as problem:
                    raise type(problem)(f"{entry.name}.{slot.name}: {problem}") from None
            if kind == 12:
                sets.append(name)
            count += 1
        self._take(_made_of(_image.written(self._KIND, entry.coded_name, parts, count, description)), entry)
        for name in sets:
            self[name] = cast(DataSet, parameters[name])

    def _take(self, handle: int, entry: Optional[_entries.Entry]) -> None:
        self._handle = handle
        self._lock = Lock()
        self._entry = entry
        self._release = operations_of(handle)["Release"]

    def __del__(self) -> None:
        # Release leaves the last error alone, which the next call may ask for. There is no handle if the
        # arguments of the constructor were wrong.
        if getattr(self, "_handle", 0):
            self._release(self._handle)

    # ---- what it is ----

    @property
    def name(self) -> str:
        """The name in the catalogue's spelling, or as it was given."""
        return self._known().name

    @property
    def code(self) -> int:
        """The code; 0 for an action that the catalogue does not know."""
        return self._known().code

    def _known(self) -> _entries.Entry:
        """The entry; for an object that came from the library it is looked up when somebody asks."""
        entry = self._entry
        if entry is None:
            with _Use(self):
                name = ctypes.c_void_p()
                _name_of(self._handle, ctypes.byref(name))
                entry = self._entry = _entries.by_name(wide_at(name.value))
        return entry

    # ---- parameters ----

    def __getitem__(self, name: str) -> Value:
        value = self._read(name)
        if value is None:
            raise KeyError(name)
        return value

    def _read(self, name: str) -> Optional[Value]:
        key = _parameter_name(name)
        record = TOrvParameterValue()
        with _Use(self):
            if not _get_value(self._handle, key, ctypes.byref(record)):
                return None
            if record.kind == Kind.ResultDataSet:
                taken_string(record.text)
                return self._read_data_set(key)
            return _value_of(record)

    def _read_data_set(self, key: bytes) -> DataSet:
        first, count = ctypes.c_void_p(), ctypes.c_uint64()
        read = operations_of(self._handle)["GetResultDataSet"]
        read(self._handle, key, ctypes.byref(first), ctypes.byref(count))
        if not first.value or not count.value:
            return DataSet()
        rows = (TOrvResultDataItem * count.value).from_address(first.value)
        return DataSet(tuple(DataItem(row.field0, row.field1, row.field2, row.field3, row.field4, wide_at(row.name))
                             for row in rows))

    def __setitem__(self, name: str, value: Value) -> None:
        self.set(name, value)

    def set(self, name: str, value: Value, kind: Optional[Kind] = None) -> None:
        """Stores a value, as `kind` if that is given, else as the catalogue declares."""
        slot = self._known().slot(name)
        if kind is None:
            kind = Kind(slot.kind if slot else _image.kind_of(value))
        enum_id = slot.enum_id if slot and slot.kind == kind else _enum_of(value)
        spelling = _parameter_name(slot.name if slot else name)
        with _Use(self):
            if kind == Kind.ResultDataSet:
                self._write_data_set(spelling, value)
            else:
                self._write(spelling, kind, enum_id, value)

    def _write(self, name: bytes, kind: int, enum_id: int, value: Any) -> None:
        payload = _image.ENCODERS[kind](value)
        record = TOrvParameterValue(kind=kind, enum_type=enum_id)
        kept = _fill_record(record, kind, value, payload)
        if not _set_value(self._handle, name, ctypes.byref(record)):
            raise last_error("the value cannot be stored")
        del kept

    def _write_data_set(self, name: bytes, value: Any) -> None:
        _image.ENCODERS[Kind.ResultDataSet](value)
        names = [ctypes.create_string_buffer(_system_string(item.name)) for item in value.items]
        rows = (TOrvResultDataItem * max(len(names), 1))()
        for row, item, text in zip(rows, value.items, names):
            row.field0, row.field1, row.field2 = item.field0, item.field1, item.field2
            row.field3, row.field4, row.name = item.field3, item.field4, ctypes.addressof(text) + 4
        write = operations_of(self._handle)["SetResultDataSet"]
        write(self._handle, name, ctypes.byref(rows), len(names))

    def __delitem__(self, name: str) -> None:
        key = _parameter_name(name)
        with _Use(self):
            operations = operations_of(self._handle)
            if not operations["HasParameter"](self._handle, key):
                raise KeyError(name)
            operations["RemoveParameter"](self._handle, key)

    def __contains__(self, name: object) -> bool:
        if not isinstance(name, str) or "\0" in name:
            return False
        with _Use(self):
            return bool(operations_of(self._handle)["HasParameter"](self._handle, wide(name)))

    def __len__(self) -> int:
        with _Use(self):
            return int(operations_of(self._handle)["GetParameterCount"](self._handle))

    def __bool__(self) -> bool:
        """True, also for an action without parameters."""
        return True

    def __iter__(self) -> Iterator[str]:
        """The names: the declared ones in the order of their declaration, then the others by name."""
        return iter([item.name for item in self._items()])

    def kind(self, name: str) -> Optional[Kind]:
        """How a parameter is stored; None if it is absent."""
        with _Use(self):
            number = operations_of(self._handle)["GetParameterType"](self._handle, _parameter_name(name))
        return Kind(number) if number else None

    def _items(self) -> List[Item]:
        image = self._image()
        items = image.items
        if self._KIND == MATCH_ACTION:
            items = items[1:]  # the description
        if len(items) > 1:
            positions = self._known().positions
            items.sort(key=lambda item: positions[item[0]])
        return items

    def _image(self) -> Image:
        data = self.to_bytes()
        try:
            return _image.read(data)[0]
        except _image.Unsound:
            return self._taken_apart(data)

    def _taken_apart(self, data: bytes) -> Image:
        """The same parameter by parameter, for values that Python does not decode."""
        names = []
        callback = ctypes.PYFUNCTYPE(None, ctypes.c_void_p, ctypes.c_void_p, ctypes.c_uint32, ctypes.c_uint32)(
            lambda _, name, kind, enum_id: names.append((wide_at(name), kind, enum_id)))
        table = (ctypes.c_void_p * 4)(None, None, None, ctypes.cast(callback, ctypes.c_void_p))
        sink = ctypes.c_void_p(ctypes.addressof(table))
        with _Use(self):
            operations_of(self._handle)["EnumerateParameters"](self._handle, ctypes.byref(sink))
        items = [Item(name, kind, enum_id, self._read(name)) for name, kind, enum_id in names]
        if self._KIND == MATCH_ACTION:
            items.insert(0, Item("Comment", Kind.String, 0, ""))
        return Image(self._KIND, self.name, items)

    # ---- forms ----

    def to_bytes(self) -> bytes:
        """The binary form, which keeps everything."""
        if not self._lock.acquire(False):
            raise BusyError
        try:
            room, size = _room_type(), ctypes.c_uint32()
            if _to_image(self._handle, room, _ROOM, ctypes.byref(size)):
                return cast(bytes, room[: size.value])
            large = ctypes.create_string_buffer(size.value)
            if not _to_large_image(self._handle, large, size.value, ctypes.byref(size)):
                raise last_error("the action has no binary form")
            return large.raw
        finally:
            self._lock.release()

    def to_text(self) -> str:
        """The technical text, which parse() reads back."""
        return self._stored_text(False)

    def to_plain(self) -> str:
        """The text for people; it cannot be read back."""
        return self._stored_text(True)

    def _stored_text(self, plain: bool) -> str:
        return self._stored(lambda room, count, size: _to_text(self._handle, room, count, plain, 0, size))

    def to_json(self, wrap: bool = True, limit: Optional[int] = None) -> str:
        """The JSON form. Parameters of a priority above `limit` are left out; None is the level of the process."""
        level = None if limit is None else ctypes.byref(ctypes.c_uint32(limit))
        return self._stored(lambda room, count, size: _to_json(self._handle, room, count, size, wrap, level))

    def _stored(self, store: Any) -> str:
        with _Use(self):
            room, size = _units_type(), ctypes.c_uint32()
            if not store(room, _ROOM, ctypes.byref(size)):
                error = last_error("the action has no such text")
                if error.sub_code != 7 or error.code != 1008:
                    raise error
                room = (ctypes.c_uint16 * size.value)()
                if not store(room, size.value, ctypes.byref(size)):
                    raise last_error("the action has no such text")
            return text_of(ctypes.string_at(room, 2 * (size.value - 1)))

    def to_dict(self) -> Dict[str, Any]:
        """Name, code and parameters; the values are those of this package. from_dict() takes it back."""
        entry = self._known()
        result = {"name": entry.name, "code": entry.code,
                  "parameters": {item.name: item.value for item in self._items()}}
        return result

    # ---- comparing and copying ----

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Action):
            return NotImplemented
        if other is self:
            return True
        equal = ctypes.c_uint8()
        with _Use(self), _Use(other):
            if not _equal(self._handle, other._handle, ctypes.byref(equal)):
                raise last_error("the actions cannot be compared")
        return bool(equal.value)

    def __copy__(self: A) -> A:
        handle = ctypes.c_void_p()
        with _Use(self):
            if not _clone(self._handle, ctypes.byref(handle)):
                raise last_error("the action cannot be copied")
        return cast(A, adopted(cast(int, handle.value), type(self)))

    def __deepcopy__(self: A, memo: object) -> A:
        return self.__copy__()

    def copy(self: A) -> A:
        return self.__copy__()

    def __reduce__(self) -> Tuple[Any, ...]:
        return _unpickled, (type(self), self.to_bytes())

    def __repr__(self) -> str:
        items = self._items()
        entry = self._known()
        if not all(_comes_back(entry, item) for item in items):
            return f"from_bytes(bytes.fromhex({self.to_bytes().hex()!r}))"
        return self._shown(entry, items)

    def _shown(self, entry: _entries.Entry, items: List[Item], more: str = "") -> str:
        named = "".join(f", {item.name}={item.value!r}" for item in items if _is_keyword(item.name))
        others = {item.name: item.value for item in items if not _is_keyword(item.name)}
        rest = f", **{others!r}" if others else ""
        return f"{self._constructor()}({entry.name!r}{named}{more}{rest})"

    def _constructor(self) -> str:
        return "Action"

    # ---- patterns ----

    def to_match_action(self) -> "MatchAction":
        """A match action that asks for all that this action holds."""
        handle = ctypes.c_void_p()
        with _Use(self):
            if not _template(self._handle, ctypes.byref(handle)):
                raise last_error("no match action can be made of it")
        return cast(MatchAction, adopted(cast(int, handle.value), MatchAction))


class MatchAction(Action):
    """A pattern over actions: a name, and the values that an action must have. The description is for people.

        >>> MatchAction("PanLeft", Camera=7).matches(Action("PanLeft", Camera=7, Speed=3))
        True
    """

    __slots__ = ()
    _KIND = MATCH_ACTION

    def __init__(self, name: str, /, description: str = "", **parameters: Optional[Value]) -> None:
        self._handle = 0
        self._fill(_entries.by_name(name), parameters, description)

    @property
    def description(self) -> str:
        text = ctypes.c_void_p()
        with _Use(self):
            _get_description(self._handle, ctypes.byref(text))
            return wide_at(text.value)

    @description.setter
    def description(self, text: str) -> None:
        with _Use(self):
            _set_description(self._handle, wide(text))

    def matches(self, action: Action) -> bool:
        """Whether the action is one of those that this describes. Any number of threads may ask at once, as long as
        none changes one of the two."""
        answer = ctypes.c_uint8()
        _matches(self._handle, action._handle, ctypes.byref(answer))
        return bool(answer.value)

    def create_action(self, template: Optional[Action] = None) -> Action:
        """An action with the values of this one, and what it lacks from an example."""
        handle = ctypes.c_void_p()
        with _Use(self), _Use(template):
            example = None if template is None else template._handle
            if not _from_template(self._handle, example, ctypes.byref(handle)):
                raise last_error("no action can be made of it")
        return adopted(cast(int, handle.value))

    def to_dict(self) -> Dict[str, Any]:
        return {**super().to_dict(), "match": True, "description": self.description}

    def _shown(self, entry: _entries.Entry, items: List[Item], more: str = "") -> str:
        text = self.description
        return super()._shown(entry, items, f", description={text!r}" if text else "")

    def _constructor(self) -> str:
        return "MatchAction"


_sample = MatchAction("")
_match_table = table_of(_sample._handle)
del _sample


class _Use:
    """Holds an action for the length of a call; refuses if another thread has it."""

    __slots__ = ("_lock",)

    def __init__(self, action: Optional[Action]) -> None:
        self._lock = action._lock if action is not None else None

    def __enter__(self) -> None:
        if self._lock is not None and not self._lock.acquire(False):
            self._lock = None
            raise BusyError

    def __exit__(self, *_: object) -> None:
        if self._lock is not None:
            self._lock.release()


# ---- objects that come from the library ----

def adopted(handle: int, kind: Optional[Type[Action]] = None) -> Action:
    """An object for a handle, whose reference it takes over; of the typed class where the action has one."""
    entry = None
    if kind is None:
        if table_of(handle) == _match_table:
            kind = MatchAction
        else:
            entry = _entries.by_code(operations_of(handle)["GetActionCode"](handle))
            kind = Action if entry is None else entry.kind or _class_of(entry)
    action: Action = kind.__new__(kind)
    action._take(handle, entry)
    return action


def _class_of(entry: _entries.Entry) -> Type[Action]:
    from . import actions

    entry.kind = kind = actions.class_of(entry.name)
    return kind


def _unpickled(kind: Type[Action], data: bytes) -> Action:
    return adopted(_made_of(data), kind)


# ---- values ----


def _parameter_name(name: str) -> bytes:
    if not isinstance(name, str):
        raise TypeError(f"a parameter's name is a str, not {type(name).__name__}")
    return wide(name)


def _enum_of(value: Any) -> int:
    from . import enums

    return enums.IDS.get(type(value), 0)


def _system_string(text: str) -> bytes:
    """The bytes of a system string, its length first."""
    units = wide(text)
    return len(units[:-2]).to_bytes(4, "little") + units


def _fill_record(record: TOrvParameterValue, kind: int, value: Any, payload: bytes) -> Any:
    """Puts a value into the record; the result has to live until the record has been used."""
    if kind == Kind.String:
        text = ctypes.create_string_buffer(_system_string(value))
        record.text = ctypes.addressof(text) + 4
        return text
    if kind in (Kind.EventType, Kind.MediaChannel, Kind.Resource):
        return _fill_named(record.payload, kind, value)
    ctypes.memmove(record.payload.bytes, payload, len(payload))
    return None


def _fill_named(payload: Any, kind: int, value: Any) -> Any:
    if kind == Kind.EventType:
        value = _image.event_type_of(value)
        target, payload.eventType.id = payload.eventType, value.id
    elif kind == Kind.MediaChannel:
        value = _image.channel_of(value)
        target, payload.channel.id, payload.channel.number = payload.channel, value.id, value.number
    else:
        value = _image.resource_of(value)
        target = payload.resource
        ctypes.memmove(ctypes.addressof(target.guid), value.guid.bytes_le, 16)
    name = ctypes.create_string_buffer(wide(value.name))
    target.name = ctypes.addressof(name)
    return name


def _value_of(record: TOrvParameterValue) -> Value:
    payload, kind = record.payload, record.kind
    if kind == Kind.Boolean:
        return bool(payload.boolean)
    if kind == Kind.Numeric32Bit:
        return _image.enum_value(payload.int32, record.enum_type)
    if kind == Kind.Numeric64Bit:
        return int(payload.int64)
    if kind == Kind.NumericDouble:
        return float(payload.real)
    if kind == Kind.String:
        return taken_string(record.text)
    if kind == Kind.DateTime:
        return date_of(payload.dateTime.value)
    if kind == Kind.Guid:
        return UUID(bytes_le=bytes(payload.guid))
    if kind == Kind.Rect:
        return Rect(*_image._rect.unpack_from(bytes(payload.bytes)))
    if kind == Kind.EventType:
        return EventType(wide_at(payload.eventType.name), payload.eventType.id)
    if kind == Kind.MediaChannel:
        return Channel(payload.channel.number, wide_at(payload.channel.name), payload.channel.id)
    if kind == Kind.Resource:
        return Resource(wide_at(payload.resource.name), UUID(bytes_le=bytes(payload.resource.guid)))
    raise Error(f"a value of the unknown kind {kind}")


def _is_keyword(name: str) -> bool:
    """Whether a call can have an argument of that name. Python takes some letters beyond ASCII for others."""
    return name.isascii() and name.isidentifier() and not iskeyword(name)


def _comes_back(entry: _entries.Entry, item: Item) -> bool:
    """Whether setting the value gives one of its kind again."""
    slot = entry.slot(item.name)
    try:
        same = item.kind == (slot.kind if slot else _image.kind_of(item.value))
    except TypeError:
        return False
    # Neither nan nor inf is a word of Python.
    special = item.kind == Kind.NumericDouble and item.value - item.value != 0
    return same and not special and item.name not in ("name", "description", "self")
