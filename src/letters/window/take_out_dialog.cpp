#include "letters/window/take_out_dialog.h"

#include "letters/window/letter_texts.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

struct FormWords {
    TakeOut::Form form;
    QString words, extension, filter;
};

const FormWords& wordsOf(int index)
{
    static const FormWords words[] = {
        {TakeOut::Form::Book, u"本（PDF）"_s, u".pdf"_s, u"PDF (*.pdf)"_s},
        {TakeOut::Form::Html, u"HTML ファイル 1 つ"_s, u".html"_s, u"HTML (*.html)"_s},
        {TakeOut::Form::PlainText, u"テキスト（UTF-8）"_s, u".txt"_s, u"テキスト (*.txt)"_s},
        {TakeOut::Form::Mbox, u"メール（mbox）"_s, u".mbox"_s, u"mbox (*.mbox)"_s},
        {TakeOut::Form::EmlFolder, u"メール（.eml ファイルのフォルダー）"_s, QString(), QString()},
    };
    return words[index];
}
constexpr int kForms = 5;

QString proposedTarget(int form)
{
    const QDir home(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    return QDir::toNativeSeparators(home.filePath(u"手紙"_s + wordsOf(form).extension));
}

}

TakeOutDialog::TakeOutDialog(std::size_t selected, std::size_t all, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(u"手紙を取り出す"_s);
    build(selected, all);
    formChanged();
}

void TakeOutDialog::build(std::size_t selected, std::size_t all)
{
    form_ = new QComboBox;
    for (int form = 0; form < kForms; ++form)
        form_->addItem(wordsOf(form).words);
    all_ = new QRadioButton(u"見つかった手紙すべて（"_s + countText(all) + u" 通）"_s);
    selection_ = new QRadioButton(u"選んだ手紙（"_s + countText(selected) + u" 通）"_s);
    // One selected row is only the letter on display.
    (selected > 1 ? selection_ : all_)->setChecked(true);
    selection_->setEnabled(selected > 0);
    paper_ = new QComboBox;
    paper_->setObjectName(u"paper"_s);
    paper_->addItems({u"A5"_s, u"A4"_s});
    title_ = new QLineEdit(u"手紙"_s);
    target_ = new QLineEdit;
    target_->setMinimumWidth(360);
    auto* const browseButton = new QPushButton(u"参照…"_s);

    auto* const buttons = new QDialogButtonBox;
    ok_ = buttons->addButton(u"取り出す"_s, QDialogButtonBox::AcceptRole);
    buttons->addButton(u"キャンセル"_s, QDialogButtonBox::RejectRole);

    auto* const layout = new QFormLayout(this);
    layout->addRow(u"形(&F)"_s, form_);
    layout->addRow(u"手紙"_s, all_);
    layout->addRow(QString(), selection_);
    bookRow_ = new QWidget;
    auto* const book = new QFormLayout(bookRow_);
    book->setContentsMargins(0, 0, 0, 0);
    book->addRow(u"題(&T)"_s, title_);
    book->addRow(u"紙の大きさ(&P)"_s, paper_);
    layout->addRow(bookRow_);
    auto* const place = new QHBoxLayout;
    place->addWidget(target_, 1);
    place->addWidget(browseButton);
    auto* const placeLabel = new QLabel(u"保存先(&S)"_s);
    placeLabel->setBuddy(target_);
    layout->addRow(placeLabel, place);
    layout->addRow(buttons);

    connect(form_, &QComboBox::currentIndexChanged, this, &TakeOutDialog::formChanged);
    connect(browseButton, &QPushButton::clicked, this, &TakeOutDialog::browse);
    connect(target_, &QLineEdit::textChanged, this,
            [this](const QString& path) { ok_->setEnabled(!path.trimmed().isEmpty()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &TakeOutDialog::acceptIfFree);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void TakeOutDialog::setForm(TakeOut::Form form)
{
    for (int index = 0; index < kForms; ++index)
        if (wordsOf(index).form == form) form_->setCurrentIndex(index);
}

void TakeOutDialog::setTarget(const QString& path)
{
    target_->setText(path);
}

void TakeOutDialog::formChanged()
{
    bookRow_->setVisible(wordsOf(form_->currentIndex()).form == TakeOut::Form::Book);
    target_->setText(proposedTarget(form_->currentIndex()));
}

void TakeOutDialog::browse()
{
    const FormWords& words = wordsOf(form_->currentIndex());
    const QString path =
        QFileDialog::getSaveFileName(this, u"保存先"_s, target_->text(), words.filter, nullptr,
                                     QFileDialog::DontConfirmOverwrite);
    if (!path.isEmpty()) target_->setText(QDir::toNativeSeparators(path));
}

// Typed or browsed: an older file is replaced only on purpose.
void TakeOutDialog::acceptIfFree()
{
    const QString path = target_->text().trimmed();
    if (QFileInfo::exists(path) &&
        QMessageBox::question(this, windowTitle(),
                              path + u"\nは、もうあります。置き換えますか？"_s) != QMessageBox::Yes)
        return;
    accept();
}

TakeOut TakeOutDialog::choice() const
{
    TakeOut choice;
    choice.form = wordsOf(form_->currentIndex()).form;
    choice.selectionOnly = selection_->isChecked();
    choice.book = {paper_->currentIndex() == 0 ? BookPaper::A5 : BookPaper::A4, title_->text()};
    choice.target = std::filesystem::path(
        QDir::fromNativeSeparators(target_->text().trimmed()).toStdU16String());
    return choice;
}

}
