// A program beside this one that stops before one file operation of its work,
// until it is told to go on.
#pragma once
#include "platform/system/child_process.h"
#include "store/fault_injection.h"

namespace tolvek::test {

class HeldProgram {
public:
    // Nothing may be open here: the program is a copy of this one.
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

    // False when the work has got through without that many operations.
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
