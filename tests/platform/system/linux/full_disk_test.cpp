#include "platform/system/linux/system_failure.h"

#include <gtest/gtest.h>

namespace tolvek::test {

// No test can use up a real quota: the system's answer is given instead.
TEST(FullDiskTest, AUsedUpQuotaIsReportedAsAFullDisk)
{
    for (const int answer : {ENOSPC, EDQUOT}) {
        EXPECT_TRUE(isFullDisk(answer));
        try {
            systemCall("mail", [&] {
                errno = answer;
                return -1;
            });
            ADD_FAILURE() << "no failure";
        } catch (const std::system_error& failure) {
            EXPECT_EQ(failure.code(), std::errc::no_space_on_device);
        }
    }
    EXPECT_FALSE(isFullDisk(EIO));
}

}
