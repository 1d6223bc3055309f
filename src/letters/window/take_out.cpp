#include "letters/window/take_out.h"

#include "letters/window/letter_texts.h"

#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressDialog>

#include <algorithm>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

QString nativeText(const std::filesystem::path& path)
{
    return QString::fromStdU16String(path.u16string());
}

ExportForm exportForm(TakeOut::Form form)
{
    switch (form) {
    case TakeOut::Form::Html:
        return ExportForm::Html;
    case TakeOut::Form::PlainText:
        return ExportForm::PlainText;
    case TakeOut::Form::EmlFolder:
        return ExportForm::EmlFolder;
    default:
        return ExportForm::Mbox;
    }
}

bool written(const Library& library, const std::vector<LetterId>& letters, const TakeOut& choice,
             const ExportProgress& progress)
{
    if (choice.form == TakeOut::Form::Book)
        return writeBook(library, letters, choice.book, choice.target, progress);
    return exportLetters(library, letters, exportForm(choice.form), choice.target, progress);
}

}

TakeOutRun::TakeOutRun(QWidget& window) : QObject(&window), window_(window) {}

void TakeOutRun::takeOut(std::shared_ptr<const Library> library, std::vector<LetterId> letters,
                         const TakeOut& choice)
{
    std::ranges::reverse(letters);
    const QString done =
        countText(letters.size()) + u" 通を取り出しました： "_s + nativeText(choice.target);
    start(u"手紙を取り出しています"_s, done,
          [library = std::move(library), letters = std::move(letters),
           choice](const ExportProgress& progress) {
              return written(*library, letters, choice, progress);
          });
}

void TakeOutRun::print(std::shared_ptr<const Library> library, std::vector<LetterId> letters)
{
    std::ranges::reverse(letters);
    const auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    printer->setDocName(u"手紙"_s);
    QPrintDialog dialog(printer.get(), &window_);
    dialog.setWindowTitle(u"手紙の印刷"_s);
    if (dialog.exec() != QDialog::Accepted) return;
    start(u"手紙を印刷しています"_s, countText(letters.size()) + u" 通を印刷しました"_s,
          [library = std::move(library), letters = std::move(letters),
           printer](const ExportProgress& progress) {
              const bool complete = printLetters(*library, letters, *printer, progress);
              if (!complete) printer->abort();
              return complete;
          });
}

void TakeOutRun::start(const QString& title, const QString& done, Job::Work work)
{
    job_ = new Job(std::move(work), this);
    auto* const progress = new QProgressDialog(title, u"中止"_s, 0, 1000, &window_);
    progress->setAttribute(Qt::WA_DeleteOnClose);
    progress->setWindowTitle(title);
    progress->setWindowModality(Qt::WindowModal);
    progress->setAutoReset(false);
    progress->setAutoClose(false);
    progress->setMinimumDuration(0);
    progress->setValue(0); // shows it: from now on the window waits
    progress_ = progress;
    connect(progress, &QProgressDialog::canceled, job_, &Job::cancel);
    connect(job_, &Job::progressed, progress, [progress](qulonglong doneSoFar, qulonglong all) {
        progress->setValue(all == 0 ? 0 : static_cast<int>(doneSoFar * 1000 / all));
    });
    connect(job_, &Job::ended, this, [this, done](bool complete, const QString& failure) {
        finish(complete, failure, done);
    });
    job_->start();
}

void TakeOutRun::finish(bool complete, const QString& failure, const QString& done)
{
    if (progress_) progress_->close();
    job_->deleteLater(); // it is sending this very signal
    job_.clear();
    if (!failure.isEmpty())
        QMessageBox::warning(&window_, u"手紙を取り出す"_s,
                             u"取り出せませんでした。\n"_s + failure);
    emit ended(complete, complete ? done : u"中止しました。ファイルは作られていません"_s);
}

void TakeOutRun::cancel()
{
    delete job_;
    if (progress_) progress_->close();
}

}
