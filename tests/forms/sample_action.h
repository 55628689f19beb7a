// An action with every parameter that the catalogue declares, each with a value of its own.
#pragma once

#include <iterator>
#include <string>

#include "objects/action.h"
#include "ulmo/number_text.h"

namespace OrvPLC {

inline void SetSampleValue(TOrvParameter& value, const TOrvParameterInternalInfo& info, int seed)
{
    std::u16string name = u"value ";
    Ulmo::AppendDecimal(name, seed);
    const auto number = static_cast<std::uint32_t>(seed);
    const TOrvGuid guid = {number + 1, 0xABCD, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    const TOrvResultDataItem items[] = {{1, 2, -3, 4, 5, nullptr}, {6, 7, 8, 9, seed, nullptr}};
    switch (info.Type) {
    case ORV_KIND_Boolean: value.SetBoolean(seed % 2 == 0); break;
    case ORV_KIND_Numeric32Bit: value.SetInt32(-seed, info.EnumType); break;
    case ORV_KIND_Numeric64Bit: value.SetInt64(0x7000'0000'0000'0000 + seed); break;
    case ORV_KIND_NumericDouble: value.SetDouble(seed % 2 == 0 ? seed : seed + 0.1); break;
    case ORV_KIND_String: value.SetString(name); break;
    case ORV_KIND_DateTime: value.SetDateTime({0xFFC4'0C40'0000'0000 + number}); break;
    case ORV_KIND_Guid: value.SetGuid(guid); break;
    case ORV_KIND_EventType: value.SetEventType(number + 1, name); break;
    case ORV_KIND_MediaChannel: value.SetMediaChannel(number, number + 1, seed % 2 == 0 ? name : u""); break;
    case ORV_KIND_Resource: value.SetResource(guid, name); break;
    case ORV_KIND_Rect: value.SetRect(0x0001'0002'7FFF'0000 + seed); break;
    case ORV_KIND_ResultDataSet: value.SetResultDataSet(items, std::size(items)); break;
    default: break;
    }
}

// With one reference that the caller owns.
inline TOrvAction* MakeSampleAction(const TOrvActionInternalInfo& entry)
{
    ObjectPtr<TOrvAction> action(TOrvAction::Create(entry));
    for (std::size_t position = 0; position < entry.Parameters.size(); ++position) {
        action->Parameters().StoreDeclared(position, [&](TOrvParameter& value) {
            SetSampleValue(value, entry.Parameters[position], static_cast<int>(position));
        });
    }
    return action.release();
}

}  // namespace OrvPLC
