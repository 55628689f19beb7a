#include "platform/posix/composition.h"

#include <array>
#include <string_view>

namespace Platform {

namespace {

// A combining mark, letters that it stands after, and what each becomes.
struct Mark {
    char16_t mark;
    std::u16string_view letters;
    std::u16string_view composed;
};

// The letters of the codesets that locales have, UTF-8 aside.
constexpr std::array<Mark, 23> kMarks = {{
    {u'\x0300', u"AEIOUaeiouÜüWwÂâĂăÊêÔôƠơƯưYy", u"ÀÈÌÒÙàèìòùǛǜẀẁẦầẰằỀềỒồỜờỪừỲỳ"},
    {u'\x0301', u"AEIOUYaeiouyCcLlNnRrSsZzÜüg¨ΑΕΗΙΟΥΩϊαεηιϋουωГКгкWwÂâĂăÊêÔôƠơƯư",
     u"ÁÉÍÓÚÝáéíóúýĆćĹĺŃńŔŕŚśŹźǗǘǵ΅ΆΈΉΊΌΎΏΐάέήίΰόύώЃЌѓќẂẃẤấẮắẾếỐốỚớỨứ"},
    {u'\x0302', u"AEIOUaeiouCcGgHhJjSsWwYyẠạẸẹỌọ", u"ÂÊÎÔÛâêîôûĈĉĜĝĤĥĴĵŜŝŴŵŶŷẬậỆệỘộ"},
    {u'\x0303', u"ANOanoIiUuÂâĂăEeÊêÔôƠơƯưYy", u"ÃÑÕãñõĨĩŨũẪẫẴẵẼẽỄễỖỗỠỡỮữỸỹ"},
    {u'\x0304', u"AaEeIiOoUuÜüИиУу", u"ĀāĒēĪīŌōŪūǕǖӢӣӮӯ"},
    {u'\x0306', u"AaGgUuУИиуẠạ", u"ĂăĞğŬŭЎЙйўẶặ"},
    {u'\x0307', u"CcEeGgIZzBbDdFfMmPpSsTt", u"ĊċĖėĠġİŻżḂḃḊḋḞḟṀṁṖṗṠṡṪṫ"},
    {u'\x0308', u"AEIOUaeiouyYΙΥιυЕІеіWw", u"ÄËÏÖÜäëïöüÿŸΪΫϊϋЁЇёїẄẅ"},
    {u'\x0309', u"AaÂâĂăEeÊêIiOoÔôƠơUuƯưYy", u"ẢảẨẩẲẳẺẻỂểỈỉỎỏỔổỞởỦủỬửỶỷ"},
    {u'\x030A', u"AaUu", u"ÅåŮů"},
    {u'\x030B', u"OoUu", u"ŐőŰű"},
    {u'\x030C', u"CcDdEeLlNnRrSsTtZzAaIiOoUuÜü", u"ČčĎďĚěĽľŇňŘřŠšŤťŽžǍǎǏǐǑǒǓǔǙǚ"},
    {u'\x031B', u"OoUu", u"ƠơƯư"},
    {u'\x0323', u"AaEeIiOoƠơUuƯưYy", u"ẠạẸẹỊịỌọỢợỤụỰựỴỵ"},
    {u'\x0326', u"SsTt", u"ȘșȚț"},
    {u'\x0327', u"CcGgKkLlNnRrSsTt", u"ÇçĢģĶķĻļŅņŖŗŞşŢţ"},
    {u'\x0328', u"AaEeIiUu", u"ĄąĘęĮįŲų"},
    {u'\x0338', u"=<>", u"≠≮≯"},
    {u'\x0653', u"ا", u"آ"},
    {u'\x0654', u"اوي", u"أؤئ"},
    {u'\x0655', u"ا", u"إ"},
    {u'\x3099', u"かきくけこさしすせそたちつてとはひふへほゝカキクケコサシスセソタチツテトハヒフヘホウヽ",
     u"がぎぐげござじずぜぞだぢづでどばびぶべぼゞガギグゲゴザジズゼゾダヂヅデドバビブベボヴヾ"},
    {u'\x309A', u"はひふへほハヒフヘホ", u"ぱぴぷぺぽパピプペポ"},
}};

constexpr bool LinesMatch()
{
    for (const Mark& row : kMarks) {
        if (row.letters.size() != row.composed.size()) return false;
    }
    return true;
}
static_assert(LinesMatch());

}  // namespace

char16_t Composed(char16_t letter, char16_t mark)
{
    for (const Mark& row : kMarks) {
        if (row.mark != mark) continue;
        const std::size_t place = row.letters.find(letter);
        return place == std::u16string_view::npos ? u'\0' : row.composed[place];
    }
    return u'\0';
}

}  // namespace Platform
