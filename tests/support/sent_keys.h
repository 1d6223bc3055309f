// Stands in for PostPet: collects what is sent, in order; what a test names fails
// instead of arriving.
//
//     SentKeys sent;
//     sent.refuse(u"%E");
//     SendMail(form, 0, u"a@x.jp", 0);
//     EXPECT_EQ(sent.take(), (Sent{u"activate 77", u"%F", ...}));
#pragma once
#include "platform/forms/send_keys.h"
#include "platform/forms/test_hooks.h"
#include "platform/runtime/runtime_error.h"

#include <functional>
#include <set>
#include <utility>
#include <vector>

namespace tolvek::test {

using Sent = std::vector<Text>;

class SentKeys {
public:
    SentKeys()
    {
        hooks::setKeySender({[this](std::int32_t id) { take(u"activate " + decimal(id)); },
                             [this](TextView keys) { take(Text(keys)); }});
    }
    ~SentKeys() { hooks::setKeySender({}); }
    SentKeys(const SentKeys&) = delete;
    SentKeys& operator=(const SentKeys&) = delete;

    // Fails with error 5, as for a text that the notation refuses or a window that is
    // gone.
    void refuse(const Text& keys) { refused_.insert(keys); }
    // Called at each step, before it is recorded.
    void watch(std::function<void(const Text&)> watcher) { watcher_ = std::move(watcher); }
    Sent take() { return std::exchange(sent_, {}); }

private:
    void take(const Text& step)
    {
        if (watcher_) watcher_(step);
        if (refused_.contains(step)) throw RuntimeError(5);
        sent_.push_back(step);
    }

    Sent sent_;
    std::set<Text> refused_;
    std::function<void(const Text&)> watcher_;
};

}
