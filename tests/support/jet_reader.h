// Uses the built reader of Jet files during a test that links tolvek_jet_test_support.
#pragma once
#include "platform/dao/jet_child.h"
#include "support/jet_reader_file.h"

namespace tolvek::test {

class JetReader {
public:
    JetReader() { setJetReader(TOLVEK_JET_READER); }
    ~JetReader() { setJetReader({}); }
    JetReader(const JetReader&) = delete;
    JetReader& operator=(const JetReader&) = delete;
};

}
