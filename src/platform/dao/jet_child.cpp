#include "platform/dao/jet_child.h"

#include "platform/dao/jet_head.h"
#include "platform/dao/test_hooks.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/child_program.h"
#include "platform/system/files.h"

#include <array>

namespace tolvek {

namespace {

using How = ChildEnd::How;

// The shadow memory of the address sanitizer doesn't fit under any limit.
#if defined(__SANITIZE_ADDRESS__)
constexpr std::uintmax_t kAddressSpace = 0;
#else
constexpr std::uintmax_t kAddressSpace = 512U << 20;
#endif
constexpr std::uintmax_t kMegabyte = 1U << 20;
constexpr std::uintmax_t kProcessorSeconds = 30; // plus one for each megabyte
constexpr std::chrono::seconds kPatiencePerMegabyte{2};

struct Reader {
    std::filesystem::path program; // empty: the one in the program's folder
    std::chrono::milliseconds patience = std::chrono::minutes(1);
};

Reader& reader()
{
    static Reader set;
    return set;
}

std::filesystem::path readerProgram()
{
    if (!reader().program.empty()) return reader().program;
    return nativePath(joinPath(appPath(), fromUtf8(programFileName("TolvekJet"))));
}

// Generous for a sound file of that size; a reader that hangs or exhausts memory is ended.
ChildLimits limitsFor(std::uintmax_t fileSize)
{
    const std::uintmax_t megabytes = fileSize / kMegabyte;
    // The file is mapped into the reader's memory.
    const std::uintmax_t memory = kAddressSpace ? kAddressSpace + fileSize : 0;
    return {.addressSpace = memory,
            .processorSeconds = kProcessorSeconds + megabytes,
            .patience = reader().patience + kPatiencePerMegabyte * static_cast<long>(megabytes),
            .isAlone = true};
}

// To the reader a disk error looks like a corrupt file. Reading the file once more, to its
// end, tells them apart.
void requireReadable(const std::filesystem::path& path)
{
    OpenFile file(path, OpenFile::Mode::Read);
    std::array<char, 1 << 16> buffer;
    while (file.read(buffer.data(), buffer.size()) > 0) {
    }
}

[[noreturn]] void throwDamaged(const std::filesystem::path& path)
{
    asFileError([&] { requireReadable(path); });
    throw RuntimeError(3343, pathText(path));
}

// Whether the child sent the whole file. Bytes that don't follow the stream's format end
// it at once.
bool tookAll(const std::filesystem::path& source, std::uintmax_t size, JetStream& stream)
{
    try {
        const ChildEnd end = runChild(readerProgram(), {}, source, limitsFor(size),
                                      [&](std::string_view bytes) { stream.take(bytes); });
        if (end.how == How::Stopped) throw RuntimeError(429); // from outside
        const int code = end.how == How::Exited ? end.code : jet::kDamaged;
        if (code == jet::kNoInput) throw RuntimeError(75);
        if (code == jet::kNotUnderstood) throw RuntimeError(kJetNotUnderstood, pathText(source));
        return code == jet::kWhole && stream.isWhole();
    } catch (const BadJet&) {
        return false;
    } catch (const ChildStartError&) {
        throw RuntimeError(429);
    }
}

}

void readJet(const std::filesystem::path& source, JetReceiver& receiver)
{
    asFileError([&] {
        const std::uintmax_t size = std::filesystem::file_size(source);
        JetStream stream(receiver, size);
        const bool whole = tookAll(source, size, stream);
        if (!stream.hasBegun()) throw RuntimeError(429); // it hasn't touched the file
        if (!whole) throwDamaged(source);
    });
}

void hooks::setJetReader(std::filesystem::path program, std::chrono::milliseconds patience)
{
    reader() = {std::move(program), patience};
}

}
