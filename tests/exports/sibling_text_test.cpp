// The conversion to and from the sibling product's text, as a caller sees it.
#include "exports/boundary.h"

namespace {

using namespace OrvTest;

struct Row {
    const char16_t* text;
    const char16_t* converted;  // null for a failure
    std::uint32_t code = 0, subCode = 0;
    const char16_t* message = u"";
};

void Check(OrvBool (*convert)(const OrvWChar*, OrvBStr*), const Row& row)
{
    const std::uint32_t open = OrvAct_GetNumberOfOpenHandles();
    OrvBStr converted = nullptr;
    EXPECT_EQ(convert(W(row.text), &converted), row.converted != nullptr);
    const auto failure = LastError();
    EXPECT_EQ(failure.has_value(), row.converted == nullptr);
    if (failure) {
        EXPECT_EQ(failure->code, row.code);
        EXPECT_EQ(failure->subCode, row.subCode);
        EXPECT_EQ(failure->message, row.message);
        EXPECT_EQ(converted, nullptr);
    } else {
        EXPECT_EQ(Text(converted), row.converted);
    }
    SysFreeString(converted);
    EXPECT_EQ(convert(W(row.text), nullptr), row.converted != nullptr);  // only to ask
    EXPECT_EQ(OrvAct_GetNumberOfOpenHandles(), open);
}

TEST(SiblingTextExports, FromTheSibling)
{
    const char16_t* const unknown = u"Action doesn't exist in ORV";
    const Row rows[] = {
        {u"SystemError (3, 12, WindowsError: 5, Description: \"disk\")",
         u"SystemError (Source: 3, Message: 12, WindowsError: 5, Description: \"disk\")"},
        {u"cameraon(5)", u"CameraOn (Camera: 5)"},
        {u"@ CameraOn (5)", nullptr, 1008, 3, unknown},
        {u"CameraOn (5", nullptr, 1008, 3, unknown},
        {u"NoSuch (5)", nullptr, 1008, 3, unknown},
        {nullptr, nullptr, 1008, 3, unknown},
        {u"SetClock (\"2023/13/01 00:00:00,000 GMT+00:00\")", nullptr, 4, 5,
         u"Invalid month part in date/time string. Expected a number from 1 to 12."},
    };
    for (const Row& row : rows) Check(Talvec_Action_ConvertHeskActionTextToOrvActionText, row);
}

TEST(SiblingTextExports, ToTheSibling)
{
    const char16_t* const unknown = u"Action doesn't exist in HESK";
    const Row rows[] = {
        {u"SystemError (Description: \"disk\", Source: 3, Message: 12, WindowsError: 5)",
         u"SystemError (3, 12, WindowsError: 5, Description: \"disk\")"},
        {u"CameraPushAF (Camera: 5)", u"CameraRAWOutput (5, \"FocusPushAF\")"},
        {u"@ CameraOn (Camera: 5)", nullptr, 1008, 3, unknown},
        {u"CameraOn (Camera: 5", nullptr, 1008, 3, unknown},
        {u"CameraAreaZoom (Camera: 5)", nullptr, 1008, 3, unknown},
        {u"NoSuch (a: 5)", nullptr, 1008, 3, unknown},
        {nullptr, nullptr, 1008, 3, unknown},
        // What fails while the text is read has the same answer.
        {u"SetClock (Date: \"2023/13/01 00:00:00,000 GMT+00:00\")", nullptr, 1008, 3, unknown},
        {u"CameraOn (5)", nullptr, 1008, 3, unknown},  // text of the sibling, which is not there
    };
    for (const Row& row : rows) Check(Talvec_Action_ConvertOrvActionTextToHeskActionText, row);
}

}  // namespace
