// Collects the boxes of failed routines as "routine number".
//
//     reports.listen();
//     edSearch_Name();
//     EXPECT_EQ(reports.take(), Reports{"edSearch_Name 3024"});
//
// Any other box is collected as "title: text". Questions are answered No unless another
// answer is given.
#pragma once
#include "platform/runtime/msg_box.h"
#include "platform/runtime/test_hooks.h"

#include <string>
#include <utility>
#include <vector>

namespace tolvek::test {

using Reports = std::vector<std::string>;

class ReportList {
public:
    ReportList() = default;
    ReportList(const ReportList&) = delete;
    ReportList& operator=(const ReportList&) = delete;

    // Takes over the boxes; their previous handler sees none until the end of the test.
    void listen(MsgAnswer toQuestions = MsgAnswer::No)
    {
        toQuestions_ = toQuestions;
        hooks::setMsgBox([this](const MsgBoxRequest& box) { return gather(box); });
    }
    Reports take() { return std::exchange(reports_, {}); }

private:
    MsgAnswer gather(const MsgBoxRequest& box)
    {
        const std::string title = toUtf8(box.title), text = toUtf8(box.text);
        const std::string opening = "エラーメッセージ (", label = "エラー番号： ";
        if (!title.starts_with(opening) || !text.starts_with(label))
            reports_.push_back(title + ": " + text);
        else
            reports_.push_back(title.substr(opening.size(), title.size() - opening.size() - 1) +
                               " " + std::to_string(std::stoi(text.substr(label.size()))));
        return box.buttons == MsgButtons::YesNo ? toQuestions_ : MsgAnswer::Ok;
    }

    Reports reports_;
    MsgAnswer toQuestions_ = MsgAnswer::No;
};

}
