// Runs the separate program that reads Jet files ("TolvekJet"), under limits.
#pragma once
#include "platform/dao/jet_stream.h"

#include <filesystem>

namespace tolvek {

// Passes the whole file to the receiver. If the file is corrupt, or the reader fails on
// it in any way: 3343, and everything received must be discarded. If the reader can't be
// started, or is ended from outside (by a user, or because memory runs short): 429, since
// that says nothing about the file. If the reader doesn't know the file's format: 3041.
// If the file can't be read: 75. Failures of the receiver propagate.
void readJet(const std::filesystem::path& source, JetReceiver& receiver);

}
