#include "platform/system/registry.h"
#include "platform/system/process.h"

namespace tolvek {

namespace {

// The desktops' tools that show a computer's hardware and system: plain information
// tools first, then system monitors with such a page. All of them open a window
// when started without arguments.
constexpr std::string_view kInformationTools[] = {
    "hardinfo2",
    "hardinfo",
    "kinfocenter",
    "cpu-x",
    "mate-system-monitor",
    "gnome-system-monitor",
    "plasma-systemmonitor",
};

}

std::vector<RegistryValue> systemRegistry()
{
    for (const std::string_view tool : kInformationTools)
        if (const auto program = installedProgram(tool))
            return {{HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH",
                     kRegistryString, program->string() + '\0'}};
    return {};
}

}
