// The same round as first_action.c, through the interfaces.
#include <OrvActions.h>

#include <cstdio>
#include <memory>
#include <string>

struct Close {
    using pointer = TOrvHandle;
    void operator()(TOrvHandle handle) const { OrvAct_CloseHandle(handle); }
};
using Action = std::unique_ptr<OrvActionObject, Close>;

// Narrow literals are found through the functions that end in A; the interfaces are wide.
static const OrvWChar* Wide(const char16_t* text)
{
    return reinterpret_cast<const OrvWChar*>(text);
}

static std::string TextOf(const Action& action, bool plain)
{
    std::uint32_t size = 0;
    OrvAct_StoreToTextBufferA(action.get(), nullptr, 0, plain, 1, &size);
    std::string text(size, '\0');
    OrvAct_StoreToTextBufferA(action.get(), text.data(), size, plain, 1, nullptr);
    text.resize(size ? size - 1 : 0);
    return text;
}

int main()
{
    const Action action(Talvec_Action_CreateActionByName(Wide(u"PanLeft")));
    ITalvecAction* panLeft = OrvInterfaceOf(action.get());
    const TOrvChannelValue camera = {4711, Wide(u"Gate north"), 7};
    panLeft->SetMediaChannel(Wide(u"Camera"), &camera);
    panLeft->SetInt32(Wide(u"Speed"), 3);

    const std::string text = TextOf(action, false);
    std::puts(text.c_str());
    std::puts(TextOf(action, true).c_str());

    const Action copy(OrvAct_CreateFromTextBufferA(text.c_str(), ORV_LENGTH_TERMINATED, ORV_EXPECT_ANY, 1, nullptr));
    std::int32_t speed = 0;
    OrvBool same = 0;
    const bool read = copy && OrvInterfaceOf(copy.get())->GetInt32(Wide(u"speed"), &speed);
    if (!read || !OrvAct_Equal(action.get(), copy.get(), &same)) return 1;
    std::printf("speed %d, %s\n", static_cast<int>(speed), same ? "reads back the same" : "reads back differently");
    return same ? 0 : 1;
}
