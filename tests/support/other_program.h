// A second process beside the test: a copy of this one that does one job, as often as
// asked.
//
// Make it before anything is opened here, or the copy has it open too:
//
//     OtherProgram reading([&] { opened(); return 0; });
//     const Alone alone(path());
//     EXPECT_EQ(reading.run(), 3356);
#pragma once
#include "support/child_process.h"

#include <functional>

namespace tolvek::test {

class OtherProgram {
public:
    explicit OtherProgram(const std::function<int()>& work)
        : child_([&] {
              for (;;) {
                  if (order_.wait() == '\0') return 1;
                  const int answer = work();
                  answer_.send(static_cast<char>(answer & 0xFF));
                  answer_.send(static_cast<char>(answer >> 8));
              }
          })
    {
    }

    int run()
    {
        order_.send();
        const int low = answer_.wait() & 0xFF;
        return low | (answer_.wait() & 0xFF) << 8;
    }

private:
    Signal order_, answer_;
    ChildProcess child_;
};

}
