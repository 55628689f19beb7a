// Makes memory run out at every place of an assignment of a value, for each kind that owns memory: the value stays as
// it was or holds an empty text, and nothing is leaked. Exit status 1 when something is wrong.
#include <cstdint>
#include <cstdio>
#include <new>
#include <string>

#include "failing_allocator.h"
#include "ulmo/binary_data.h"
#include "ulmo/blob_ptr.h"
#include "ulmo/exceptions.h"
#include "ulmo/variant.h"

using Ulmo::Variant;

namespace {

const std::string kBefore(100, 'b');

// One assignment whose allocation of this number fails. False when it took fewer.
bool Assign(const Variant& sample, std::uint64_t number, bool& right)
{
    Variant value = kBefore;
    FailingAllocator::Arm(number, false);
    try {
        value = sample;
    } catch (const std::bad_alloc&) {
    } catch (const Ulmo::OutOfMemoryException&) {
    }
    FailingAllocator::Disarm();
    const bool failed = FailingAllocator::Failed();
    const std::string text = value.ToString();
    const bool kept = text == kBefore || (text.empty() && value.GetKind() == Variant("").GetKind());
    right = failed ? kept : text == sample.ToString() && value.GetKind() == sample.GetKind();
    return failed;
}

}  // namespace

int main()
{
    const Variant samples[] = {std::string(100, 'n'), std::u16string(100, u'w'), Ulmo::BinaryData("abc", 3),
                               Ulmo::BlobPtr::Allocate(4)};
    constexpr int kRounds = 40;
    int assignments = 0;
    int findings = 0;
    std::int64_t live = 0;
    for (int round = 0; round < kRounds; ++round) {
        // By now the pool has all the buffers that it keeps.
        if (round == kRounds / 2) live = FailingAllocator::LiveBlocks();
        for (const Variant& sample : samples) {
            bool failed = true;
            for (std::uint64_t number = 1; failed; ++number, ++assignments) {
                bool right = false;
                failed = Assign(sample, number, right);
                if (right) continue;
                ++findings;
                std::printf("finding: kind %d, allocation %d\n", sample.GetKind(), static_cast<int>(number));
            }
        }
    }
    live = FailingAllocator::LiveBlocks() - live;
    if (live != 0) std::printf("finding: %d blocks leaked\n", static_cast<int>(live));
    findings += live != 0;
    std::printf("assignments %d\nfindings %d\n", assignments, findings);
    return findings == 0 ? 0 : 1;
}
