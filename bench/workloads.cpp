#include "workloads.h"

namespace OrvBench {

TOrvHandle MakeSmall()
{
    const TOrvHandle handle = Talvec_Action_CreateActionByName(u"PanLeft");
    ITalvecAction* action = OrvInterfaceOf(handle);
    const TOrvChannelValue camera = {7, u"front door", 5};
    action->SetMediaChannel(u"Camera", &camera);
    action->SetInt32(u"Speed", 3);
    return handle;
}

TOrvHandle MakeLarge()
{
    const TOrvHandle handle = Talvec_Action_CreateActionByName(u"LenelAccessEvent");
    ITalvecAction* action = OrvInterfaceOf(handle);
    const TUlmoDateTime time = {0x00000C3A5B6C7D8E};
    const std::int64_t card = 9007199254740993;
    action->SetEnum(u"SubType", 20, ORV_ENUM_LenelEventID);
    action->SetString(u"Panel", u"Panel North");
    action->SetString(u"Device", u"Reader 17, main entrance");
    action->SetInt32(u"SecondaryDevice", 4);
    action->SetInt64(u"CardNumber", &card);
    action->SetEnum(u"AccessResult", 2, ORV_ENUM_LenelAccessResult);
    action->SetEnum(u"Type", 1, ORV_ENUM_LenelEventType);
    action->SetString(u"Description", u"Access was granted to a person known to the system, by card");
    action->SetInt32(u"SerialNumber", 123456);
    action->SetDateTime(u"TimeStamp", &time);
    action->SetInt32(u"AreaEnteredID", 11);
    action->SetInt32(u"AreaExitedID", 12);
    action->SetString(u"AssetID", u"ASSET-0042");
    action->SetBoolean(u"CardholderEntered", 1);
    action->SetBoolean(u"Duress", 0);
    action->SetInt32(u"ElevatorFloor", 3);
    action->SetInt32(u"FacilityCode", 77);
    action->SetBoolean(u"IsReadableCard", 1);
    action->SetInt32(u"IssueCode", 2);
    action->SetString(u"CommServerHostName", u"access-server-1.example");
    action->SetString(u"EventText", u"Door opened after a valid card was presented");
    return handle;
}

TOrvHandle MakeLong()
{
    static const std::u16string text(65536, u'x');
    const TOrvHandle handle = Talvec_Action_CreateActionByName(u"CustomAction");
    ITalvecAction* action = OrvInterfaceOf(handle);
    const std::int64_t number = 42;
    action->SetInt64(u"Int", &number);
    action->SetString(u"String", text.c_str());
    return handle;
}

std::u16string TextOf(TOrvHandle handle, bool plain)
{
    std::uint32_t required = 0;
    OrvAct_StoreToTextBufferW(handle, nullptr, 0, plain, 0, &required);
    std::u16string text(required, u'\0');
    OrvAct_StoreToTextBufferW(handle, text.data(), required, plain, 0, nullptr);
    text.resize(required - 1);
    return text;
}

}  // namespace OrvBench
