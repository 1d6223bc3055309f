// For tests alone: replaces what this layer asks the machine, and interrupts its file
// operations. A hook stays until it is set again; an empty argument restores the real
// thing.
#pragma once
#include "platform/system/files.h"
#include "platform/system/process_list.h"
#include "platform/system/registry.h"

#include <functional>

namespace tolvek {

using FileProbe = std::function<void(FileOperation, const std::filesystem::path&)>;

namespace hooks {

// Asked before each file operation; it fails with the std::system_error that it throws.
void setFileProbe(FileProbe probe);

// May throw std::system_error.
void setProcessLister(std::function<std::vector<RunningProgram>()> lister);

void setVolumeFolders(std::vector<std::string> folders); // only these
void setWindowsFolder(std::filesystem::path folder);

// After the first value is set, or the registry cleared, the system's own values are
// hidden until the reset.
void setRegistryValue(std::uint32_t root, const std::string& keyName, const std::string& valueName,
                      std::uint32_t type, const std::string& bytes);
void clearRegistry();
void resetRegistry();

}
}
