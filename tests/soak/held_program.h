// A second program, which stops before one file operation of its work until finish()
// lets it go on.
#pragma once
#include "support/child_process.h"
#include "support/fault_injection.h"

namespace tolvek::test {

class HeldProgram {
public:
    // No database may be open here, since the second program is a fork of this one.
    HeldProgram(int operation, const std::function<void()>& work, const FaultFilter& counts = {})
        : child_([&] {
              const auto hold = [this] {
                  stopped_.send('s');
                  goOn_.wait();
              };
              faultAt(operation, hold, {}, counts);
              work();
              stopped_.send('e');
              return 0;
          })
    {
    }

    // False if the work ended with fewer operations.
    bool isStopped() { return stopped_.wait() == 's'; }
    int finish()
    {
        goOn_.send();
        return child_.exitCode();
    }

private:
    Signal stopped_, goOn_;
    ChildProcess child_;
};

}
