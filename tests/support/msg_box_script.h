// The boxes that a test expects, in order, with their answers.
//
//     MsgBoxScript boxes;
//     boxes.expect(u"よろしいですか？", MsgAnswer::Yes);
//     boxes.expect(u"終わりました。", MsgAnswer::Ok, u"Tolvek");
//
// An unexpected box fails the test and is answered No, Cancel or OK; an expected box
// that was never shown fails it at the end. Without a title, any title matches.
#pragma once
#include "platform/runtime/msg_box.h"
#include "platform/runtime/test_hooks.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tolvek::test {

class MsgBoxScript {
public:
    MsgBoxScript()
    {
        hooks::setMsgBox([this](const MsgBoxRequest& box) { return answer(box); });
    }
    ~MsgBoxScript()
    {
        hooks::setMsgBox({});
        for (const Expected& missing : expected_)
            ADD_FAILURE() << "box never came: " << narrow(missing.text);
    }
    MsgBoxScript(const MsgBoxScript&) = delete;
    MsgBoxScript& operator=(const MsgBoxScript&) = delete;

    void expect(TextView text, MsgAnswer answer = MsgAnswer::Ok,
                std::optional<Text> title = std::nullopt)
    {
        expected_.push_back({Text(text), answer, std::move(title), {}});
    }
    // `look` runs while the box is shown, to check what the program shows or holds
    // then.
    void expectAndLook(TextView text, MsgAnswer answer, std::function<void()> look)
    {
        expected_.push_back({Text(text), answer, std::nullopt, std::move(look)});
    }
    std::size_t pending() const { return expected_.size(); }
    const std::vector<MsgBoxRequest>& shown() const { return shown_; }

private:
    struct Expected {
        Text text;
        MsgAnswer answer;
        std::optional<Text> title;
        std::function<void()> look;
    };

    static std::string narrow(TextView text) { return toUtf8(text); }

    MsgAnswer answer(const MsgBoxRequest& box)
    {
        shown_.push_back(box);
        if (expected_.empty() || expected_.front().text != box.text) return unforeseen(box);
        const Expected next = std::move(expected_.front());
        expected_.pop_front();
        if (next.title) {
            EXPECT_EQ(narrow(box.title), narrow(*next.title)) << "title of: " << narrow(box.text);
        }
        checkAnswer(box, next.answer);
        if (next.look) next.look();
        return next.answer;
    }

    static void checkAnswer(const MsgBoxRequest& box, MsgAnswer answer)
    {
        const bool question = answer == MsgAnswer::Yes || answer == MsgAnswer::No;
        EXPECT_EQ(box.buttons == MsgButtons::YesNo, question)
            << "no such button in: " << narrow(box.text);
        EXPECT_TRUE(box.buttons == MsgButtons::OkCancel || answer != MsgAnswer::Cancel)
            << "no such button in: " << narrow(box.text);
    }
    static MsgAnswer refusal(MsgButtons buttons)
    {
        if (buttons == MsgButtons::YesNo) return MsgAnswer::No;
        return buttons == MsgButtons::OkCancel ? MsgAnswer::Cancel : MsgAnswer::Ok;
    }

    MsgAnswer unforeseen(const MsgBoxRequest& box) const
    {
        ADD_FAILURE() << "unforeseen box [" << narrow(box.title) << "] " << narrow(box.text)
                      << (expected_.empty() ? std::string(", none was expected")
                                            : "\n  expected: " + narrow(expected_.front().text));
        return refusal(box.buttons);
    }

    std::deque<Expected> expected_;
    std::vector<MsgBoxRequest> shown_;
};

}
