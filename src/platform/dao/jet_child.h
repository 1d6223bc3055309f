// The program beside ours that reads Jet files ("TolvekJet"), run under limits.
#pragma once
#include "platform/dao/jet_stream.h"

#include <chrono>
#include <filesystem>

namespace tolvek {

// All of the file to the receiver. A file that is damaged, or that the reader
// fails at in any way: 3343, and what was received is worth nothing. A reader
// that can't be started, or that is ended from outside (memory that runs short,
// a user): 429, since none of this says anything about the file. A file of a form
// that the reader doesn't know: 3041. One that can't be read: 75. The receiver's
// own failures go through.
void readJet(const std::filesystem::path& source, JetReceiver& receiver);

// Another reader than the one in the program's folder, for tests, and how long
// it may take; an empty path takes it back.
void setJetReader(std::filesystem::path program,
                  std::chrono::milliseconds patience = std::chrono::minutes(1));

}
