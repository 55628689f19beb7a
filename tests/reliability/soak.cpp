// Round trips without end in one process: text, binary, event record, match. Memory and handles have to stay where
// they are.
//
//   reliability_soak ROUNDS
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include <unistd.h>

#include "sample.h"

namespace {

constexpr std::uint64_t kWarmUp = 20'000;
constexpr long kAllowed = 1 << 20;  // bytes of drift
constexpr const char* kNames[] = {"PanLeft",          "EventStarted", "UserLogin",
                                  "LenelAccessEvent", "CameraOn",     "FaceRecEvent"};

long ResidentBytes()
{
    std::ifstream file("/proc/self/statm");
    long total = 0, resident = 0;
    file >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

std::uint64_t wrong = 0;

// What came back has to be equal, and is closed.
void Expect(TOrvHandle made, TOrvHandle object)
{
    OrvBool equal = 0;
    if (!made || !OrvAct_Equal(made, object, &equal) || !equal) ++wrong;
    if (made) OrvAct_CloseHandle(made);
}

void RoundByText(TOrvHandle object)
{
    static OrvWChar text[65536];
    if (!OrvAct_StoreToTextBufferW(object, text, std::size(text), 0, 0, nullptr)) ++wrong;
    Expect(OrvAct_CreateFromTextBufferW(text, ORV_LENGTH_TERMINATED, ORV_EXPECT_ANY, 0, nullptr), object);
}

void RoundByBinary(TOrvHandle object)
{
    static char bytes[65536];
    std::uint32_t size = 0;
    if (!OrvAct_StoreToBinBuffer(object, bytes, sizeof bytes, &size)) ++wrong;
    Expect(OrvAct_CreateFromBinBuffer(bytes, size, ORV_EXPECT_ANY, nullptr), object);
}

void RoundByEvent(TOrvHandle object)
{
    static char image[65536];
    std::uint32_t size = 0;
    TOrvEventData record{};
    record.size = sizeof record;
    if (!OrvAct_GetActionEventData(object, &record, nullptr)) ++wrong;
    if (!OrvAct_StoreToBinBuffer(object, image, sizeof image, &size)) ++wrong;
    record.image = image;
    record.imageSize = size;
    Expect(OrvAct_RestoreActionFromEventData(&record), object);
}

void RoundByMatch(TOrvHandle object)
{
    TOrvHandle pattern = nullptr;
    OrvBool matches = 0;
    if (!OrvAct_CreateMatchActionFromTemplate(object, &pattern)) ++wrong;
    if (!OrvMatchAct_Matches(pattern, object, &matches) || !matches) ++wrong;
    TOrvHandle made = nullptr;
    if (!OrvMatchAct_CreateActionFromTemplate(pattern, object, &made)) ++wrong;
    if (made) OrvAct_CloseHandle(made);
    if (pattern) OrvAct_CloseHandle(pattern);
}

}  // namespace

int main(int count, char** arguments)
{
    const std::uint64_t rounds = count > 1 ? std::strtoull(arguments[1], nullptr, 10) : 1'000'000;
    std::vector<TOrvHandle> objects;
    for (const char* name : kNames) {
        objects.push_back(Talvec_Action_CreateActionByCode(OrvAct_GetActionCodeByNameA(name)));
        Sample::SetEveryParameter(objects.back());
    }
    void (*const ways[])(TOrvHandle) = {RoundByText, RoundByBinary, RoundByEvent, RoundByMatch};
    const std::uint32_t handles = OrvAct_GetNumberOfOpenHandles();
    long start = 0, most = 0;
    for (std::uint64_t round = 0; round < kWarmUp + rounds; ++round) {
        if (round == kWarmUp) start = ResidentBytes();
        ways[round % 4](objects[round / 4 % objects.size()]);
        if (round % 10'000 == 0 && round > kWarmUp) most = std::max(most, ResidentBytes() - start);
    }
    const bool flat = OrvAct_GetNumberOfOpenHandles() == handles;
    std::printf("rounds %llu\ndrift_bytes %ld\nhandles_flat %d\nwrong %llu\n", static_cast<unsigned long long>(rounds),
                most, flat, static_cast<unsigned long long>(wrong));
    return wrong != 0 || !flat || most > kAllowed;
}
