#include "ulmo/huge_stream.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "platform/system_error.h"
#include "ulmo/buffer_pool.h"
#include "ulmo/exceptions.h"

namespace {

using Platform::File;
using Ulmo::THugeFileStream;

// A file name of the test's own, with a letter that no code page of the test machines has.
class HugeFileStream : public testing::Test {
protected:
    HugeFileStream() { Remove(); }
    ~HugeFileStream() override { Remove(); }

    void Remove() { std::filesystem::remove(name_); }
    void Append(std::string_view text) { THugeFileStream(name_, File::Use::Append).Write(text.data(), text.size()); }
    std::string Content() { return THugeFileStream(name_).ReadToEnd(); }

    const std::filesystem::path name_ = std::filesystem::path(testing::TempDir()) / u"orv_stream_\u4e16.log";
};

TEST_F(HugeFileStream, AppendsBehindWhatIsThere)
{
    Append("one ");
    Append("two");
    EXPECT_EQ(Content(), "one two");

    THugeFileStream log(name_, File::Use::Append);
    log.Write(" three", 6);
    EXPECT_EQ(log.Size(), 13U);
    // Whoever follows a log reads it, and when it is full enough deletes it, while it is being written.
    std::string line;
    EXPECT_TRUE(std::getline(std::ifstream(name_, std::ios::binary), line));
    EXPECT_EQ(line, "one two three");
    EXPECT_NO_THROW(Remove());
}

TEST_F(HugeFileStream, ReadsInPiecesAndFromAPosition)
{
    std::string content(100'000, 'a');
    content.back() = 'z';
    Append(content);
    THugeFileStream stream(name_);
    char piece[8] = {};
    stream.SetPosition(99'995);
    Ulmo::ReadExactly(stream, piece, 4);
    EXPECT_EQ(stream.Position(), 99'999U);
    EXPECT_EQ(stream.Read(piece, sizeof piece), 1U);
    EXPECT_EQ(piece[0], 'z');
    EXPECT_EQ(stream.ReadToEnd(), "");
    stream.SetPosition(0);
    EXPECT_EQ(stream.ReadToEnd(), content);
}

TEST_F(HugeFileStream, CountsBeyondFourGigabytes)
{
    constexpr std::uint64_t kHole = (5ULL << 30) + 3;
    Append("start");
    std::filesystem::resize_file(name_, kHole);
    Append("end");
    THugeFileStream stream(name_);
    EXPECT_EQ(stream.Size(), kHole + 3);
    stream.SetPosition(kHole - 1);
    EXPECT_EQ(stream.ReadToEnd(), std::string("\0end", 4));
    EXPECT_EQ(stream.Position(), kHole + 3);
}

template <class Call>
Ulmo::SystemException FailureOf(Call call)
{
    try {
        call();
    } catch (const Ulmo::SystemException& failure) {
        return failure;
    }
    ADD_FAILURE() << "nothing was raised";
    return Ulmo::SystemException(0);
}

TEST_F(HugeFileStream, FailuresNameOperationAndFile)
{
    const auto tells = [this](const Ulmo::SystemException& failure, std::u16string_view operation) {
        const auto& message = failure.WideMessage();
        return message.ends_with(std::u16string(operation).append(u" of ").append(name_.u16string()));
    };
    EXPECT_TRUE(tells(FailureOf([&] { THugeFileStream stream(name_); }), u" in Ulmo::THugeFileStream::Open"));
    EXPECT_THROW(THugeFileStream stream(testing::TempDir()), Ulmo::SystemException);
    Append("x");
    THugeFileStream reader(name_);
    EXPECT_TRUE(tells(FailureOf([&] { reader.Write("x", 1); }), u"Write"));
    EXPECT_TRUE(tells(FailureOf([&] { reader.SetPosition(1ULL << 63); }), u"SetPosition"));
    char bytes[2];
    EXPECT_EQ(FailureOf([&] { Ulmo::ReadExactly(reader, bytes, 2); }).ErrorCode(), Platform::kResultEndOfFile);
}

TEST(BufferPool, GrowsByHalfAndWholePages)
{
    const Ulmo::CountedPtr<Ulmo::Buffer> buffer = Ulmo::MakeCounted<Ulmo::Buffer>();
    buffer->Assign("a", 1);
    EXPECT_EQ(buffer->Capacity(), 4096U);
    buffer->Resize(4097);
    EXPECT_EQ(buffer->Capacity(), 8192U);  // 6145 and 4095, rounded down
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(buffer->Data()) % 16, 0U);
    EXPECT_EQ(std::memcmp(buffer->Data(), "a\0", 2), 0);
    buffer->Assign(std::string(8192, 'b').data(), 8192);
    EXPECT_EQ(buffer->Capacity(), 8192U);
    buffer->Resize(1);
    buffer->Resize(2);
    EXPECT_EQ(buffer->Data()[1], std::byte{0});
    EXPECT_THROW(buffer->Resize(SIZE_MAX), Ulmo::OutOfMemoryException);
    EXPECT_THROW(buffer->Resize(SIZE_MAX / 8), Ulmo::OutOfMemoryException);
    EXPECT_EQ(buffer->Size(), 2U);
}

int endedBuffers = 0;

class EndingBuffer final : public Ulmo::Buffer {
public:
    ~EndingBuffer() override { ++endedBuffers; }
};

// The pool keeps a few of those that are given back at a time; the rest must not stay behind.
TEST(BufferPool, EndsWhatItDoesNotKeep)
{
    std::vector<Ulmo::CountedPtr<EndingBuffer>> many(50);
    for (auto& one : many) one = Ulmo::MakeCounted<EndingBuffer>();
    many.clear();
    Ulmo::BufferPool::Clear();
    EXPECT_EQ(endedBuffers, 50);
}

TEST(BufferPool, GivesABufferAgainButNotItsBytes)
{
    const Ulmo::Buffer* first = nullptr;
    {
        const auto buffer = Ulmo::BufferPool::Take();
        buffer->Assign("abc", 3);
        first = buffer.get();
    }
    const auto again = Ulmo::BufferPool::Take();
    EXPECT_EQ(again.get(), first);
    EXPECT_EQ(again->Size(), 0U);

    std::vector<std::thread> threads;
    for (int i = 0; i != 4; ++i) {
        threads.emplace_back([] {
            for (int round = 0; round != 2000; ++round) {
                const auto mine = Ulmo::BufferPool::Take();
                const auto other = Ulmo::BufferPool::Take();
                mine->Assign(&round, sizeof round);
                EXPECT_EQ(other->Size(), 0U);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    Ulmo::BufferPool::Clear();
}

}  // namespace
