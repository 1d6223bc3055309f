#include "platform/forms/input_box.h"

#include "platform/forms/entry_filter.h"
#include "platform/forms/events.h"
#include "platform/forms/in_front.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/screen.h"
#include "platform/forms/test_hooks.h"
#include "platform/runtime/msg_box.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tolvek {

namespace {

std::function<Text(const InputBoxRequest&)> inputBoxHandler;

void addButtons(QDialog& dialog, QVBoxLayout& rows)
{
    auto* buttons = new QDialogButtonBox(&dialog);
    buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QStringLiteral("キャンセル"), QDialogButtonBox::RejectRole);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    rows.addWidget(buttons);
}

QLineEdit* addRows(QDialog& dialog, const InputBoxRequest& request)
{
    auto* rows = new QVBoxLayout(&dialog);
    auto* prompt = new QLabel(paintedText(request.prompt), &dialog);
    // Otherwise a text that looks like markup would be interpreted.
    prompt->setTextFormat(Qt::PlainText);
    rows->addWidget(prompt);
    auto* edit = new QLineEdit(toQt(request.defaultText), &dialog);
    // Owned by the edit.
    new EntryFilter(*edit);
    edit->selectAll();
    prompt->setBuddy(edit);
    rows->addWidget(edit);
    addButtons(dialog, *rows);
    return edit;
}

Text ask(const InputBoxRequest& request)
{
    QDialog dialog(QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("InputBox"));
    dialog.setWindowTitle(toQt(request.title));
    const QLineEdit* edit = addRows(dialog, request);
    comeToFront(dialog);
    // An event that throws closes the dialog; the exception is then rethrown here.
    const WaitScope wait([&dialog] { dialog.reject(); });
    const bool accepted = dialog.exec() == QDialog::Accepted;
    rethrowKept();
    return accepted ? fromQt(edit->text()) : Text();
}

}

void hooks::setInputBox(std::function<Text(const InputBoxRequest&)> answer)
{
    inputBoxHandler = std::move(answer);
}

Text InputBox(TextView prompt, TextView title, TextView defaultText)
{
    beforeWait();
    const InputBoxRequest request{Text(prompt), Text(title), Text(defaultText)};
    return inputBoxHandler ? inputBoxHandler(request) : ask(request);
}

}
