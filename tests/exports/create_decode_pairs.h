// All pairs of create and decode functions, callable in one way: with a list of cells, one for each C argument.
//
// How an argument is passed is deduced from the function types; which kind it has comes from the catalogue. So the
// declarations of the pairs are checked against the catalogue as well.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "exports/boundary.h"

namespace OrvTest {

// One argument: what goes in, whatever its type, and what comes out.
struct Cell {
    bool isNull = false;  // for pointers
    OrvBool truth = 0;
    std::int32_t number = 0;
    std::int64_t large = 0;
    double real = 0;
    TUlmoDateTime date{};
    TOrvGuid guid{};
    TOrvEventTypeValue event{};
    TOrvChannelValue channel{};
    TOrvResourceValue resource{};
    std::vector<TOrvResultDataItem> items;
    std::u16string wide;
    std::string narrow;
    alignas(8) unsigned char output[32];

    template <class T>
    T Output() const
    {
        T value;
        std::memcpy(&value, output, sizeof value);
        return value;
    }
};
using Cells = std::vector<Cell>;

inline OrvBool Input(const Cell& cell, OrvBool*)
{
    return cell.truth;
}
inline std::int32_t Input(const Cell& cell, std::int32_t*)
{
    return cell.number;
}
inline std::uint32_t Input(const Cell& cell, std::uint32_t*)
{
    return static_cast<std::uint32_t>(cell.number);
}
inline const OrvBool* Input(const Cell& cell, const OrvBool**)
{
    return &cell.truth;
}
inline const std::int32_t* Input(const Cell& cell, const std::int32_t**)
{
    return &cell.number;
}
inline const std::uint32_t* Input(const Cell& cell, const std::uint32_t**)
{
    return reinterpret_cast<const std::uint32_t*>(&cell.number);
}
inline const std::int64_t* Input(const Cell& cell, const std::int64_t**)
{
    return &cell.large;
}
inline const double* Input(const Cell& cell, const double**)
{
    return &cell.real;
}
inline const TUlmoDateTime* Input(const Cell& cell, const TUlmoDateTime**)
{
    return &cell.date;
}
inline const TOrvGuid* Input(const Cell& cell, const TOrvGuid**)
{
    return &cell.guid;
}
inline const TOrvEventTypeValue* Input(const Cell& cell, const TOrvEventTypeValue**)
{
    return &cell.event;
}
inline const TOrvChannelValue* Input(const Cell& cell, const TOrvChannelValue**)
{
    return &cell.channel;
}
inline const TOrvResourceValue* Input(const Cell& cell, const TOrvResourceValue**)
{
    return &cell.resource;
}
inline const TOrvResultDataItem* Input(const Cell& cell, const TOrvResultDataItem**)
{
    return cell.items.data();
}
inline const OrvWChar* Input(const Cell& cell, const OrvWChar**)
{
    return W(cell.wide.c_str());
}
inline const char* Input(const Cell& cell, const char**)
{
    return cell.narrow.c_str();
}

template <class T>
T InputOf(const Cell& cell)
{
    if constexpr (std::is_pointer_v<T>) {
        if (cell.isNull) return nullptr;
    }
    return Input(cell, static_cast<T*>(nullptr));
}

// How one argument is passed, deduced from the two function types.
struct Shape {
    bool isNarrow;
    bool isPointerOutput;  // the output is a pointer into the action
};

template <class In, class Out>
constexpr Shape ShapeOf()
{
    return {std::is_same_v<In, const char*>, std::is_pointer_v<std::remove_pointer_t<Out>>};
}

struct Pair {
    using Function = void (*)();

    std::string name;
    std::u16string action;
    std::vector<Shape> shapes;  // one for each argument
    Function create;
    Function decode;
    TOrvHandle (*callCreate)(Function, const Cells&);
    OrvBool (*callDecode)(Function, TOrvHandle, Cells&);

    Handle Create(const Cells& cells) const { return Handle(callCreate(create, cells)); }
    // The outputs are 0xA5 all over before the call.
    bool Decode(const Handle& handle, Cells& cells) const
    {
        for (Cell& cell : cells) std::memset(cell.output, 0xA5, sizeof cell.output);
        return callDecode(decode, handle.get(), cells) != 0;
    }
};

// Made once for each pair of function types: many pairs share theirs.
template <class... In, class... Out>
Pair MakePair(const char* name, const char16_t* action, TOrvHandle (*create)(In...),
              OrvBool (*decode)(TOrvHandle, Out...))
{
    static_assert(sizeof...(In) == sizeof...(Out));
    const auto callCreate = [](Pair::Function function, [[maybe_unused]] const Cells& cells) {
        return [&]<std::size_t... At>(std::index_sequence<At...>)
        {
            return reinterpret_cast<TOrvHandle (*)(In...)>(function)(InputOf<In>(cells[At])...);
        }
        (std::index_sequence_for<In...>());
    };
    const auto callDecode = [](Pair::Function function, TOrvHandle handle, [[maybe_unused]] Cells& cells) {
        return [&]<std::size_t... At>(std::index_sequence<At...>)
        {
            return reinterpret_cast<OrvBool (*)(TOrvHandle, Out...)>(function)(
                handle, reinterpret_cast<Out>(cells[At].output)...);
        }
        (std::index_sequence_for<Out...>());
    };
    return {name,
            action,
            {ShapeOf<In, Out>()...},
            reinterpret_cast<Pair::Function>(create),
            reinterpret_cast<Pair::Function>(decode),
            callCreate,
            callDecode};
}

}  // namespace OrvTest
