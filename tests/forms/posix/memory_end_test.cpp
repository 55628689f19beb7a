// Texts that end where the memory does, so that whoever looks behind the end falls.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>

#include "forms/describe.h"
#include "forms/text_reader.h"

namespace OrvPLC {
namespace {

std::string Answer(std::u16string_view text)
{
    const TextReadResult read = ReadActionText(text, ORV_EXPECT_ANY, false);
    const ObjectPtr<TOrvAction> object(read.object);
    return (object ? Describe(*object) : "none") + " " + std::to_string(read.consumed);
}

TEST(MemoryEnd, NothingBehindATextIsRead)
{
    const std::u16string whole =
        u"@ \"a b\" (x: -1.5e+3, \"n\": { 1, 2, \"c\" }, r: { \"\", \"y\" }, d: { { 1, 2, 3, 4, 5, \"i\" } }, "
        u"s: \"<a b=\">\" c=d e='f'/><!-- -- --><![CDATA[]]></a >\", y: 1)";
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void* const pages = mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    char* const end = static_cast<char*>(pages) + page;
    ASSERT_EQ(mprotect(end, page, PROT_NONE), 0);
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        char16_t* const text = reinterpret_cast<char16_t*>(end) - size;
        std::copy_n(whole.data(), size, text);
        EXPECT_EQ(Answer({text, size}), Answer(whole.substr(0, size)));
    }
    munmap(pages, 2 * page);
}

}  // namespace
}  // namespace OrvPLC
