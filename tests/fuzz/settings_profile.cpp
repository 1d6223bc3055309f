// A settings file: what is written is read back, and writing it again changes nothing.
#include "fuzz/fuzz_target.h"
#include "platform/runtime/profile_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tolvek;
    ProfileText profile{std::string(fuzz::bytesOf(data, size))};
    profile.value(u"Option", u"Font");
    profile.setValue(u"Option", u"Font", "MS UI Gothic");
    fuzz::require(profile.value(u"Option", u"Font") == "MS UI Gothic");
    fuzz::require(!profile.setValue(u"Option", u"Font", "MS UI Gothic"));
    ProfileText again{profile.bytes()};
    fuzz::require(again.value(u"Option", u"Font") == "MS UI Gothic");
    return 0;
}
