// The output of the Jet reader, in two pieces: a valid stream or none, and never more
// data than the file can hold.
#include "platform/dao/jet_stream.h"
#include "fuzz/fuzz_target.h"

namespace {

using namespace tolvek;

struct Counted : JetReceiver {
    void table(const Text&, const std::vector<JetColumn>& named) override
    {
        columns = named.size();
    }
    void row(const std::vector<JetValue>& values) override
    {
        fuzz::require(values.size() == columns);
    }
    void end() override { ended = true; }
    std::size_t columns = 0;
    bool ended = false;
};

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Counted counted;
    JetStream stream(counted, size);
    const std::string_view bytes = fuzz::bytesOf(data, size);
    try {
        stream.take(bytes.substr(0, size / 2));
        stream.take(bytes.substr(size / 2));
    } catch (const BadJet&) {
        return 0;
    }
    fuzz::require(!stream.isWhole() || counted.ended);
    return 0;
}
