// Uses the built reader of Jet files during a test that links tolvek_jet_test_support.
#pragma once
#include "platform/dao/jet_child.h"
#include "platform/dao/test_hooks.h"
#include "support/jet_reader_file.h"

namespace tolvek::test {

class JetReader {
public:
    JetReader() { hooks::setJetReader(TOLVEK_JET_READER); }
    ~JetReader() { hooks::setJetReader({}); }
    JetReader(const JetReader&) = delete;
    JetReader& operator=(const JetReader&) = delete;
};

}
