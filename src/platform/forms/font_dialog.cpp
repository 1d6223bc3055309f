#include "platform/forms/font_dialog.h"

#include "platform/forms/events.h"
#include "platform/forms/fonts.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/test_hooks.h"
#include "platform/runtime/codepage932.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/runtime_error.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <cmath>
#include <utility>

namespace tolvek {

namespace {

constexpr float kLargestSize = 2160;
constexpr int kListRows = 9;
// Pixels. The sample grows with its text up to the larger size; beyond that it is cut.
constexpr QSize kLeastSample(340, 64);
constexpr QSize kLargestSample(640, 200);

std::function<bool(FontDialogFields&)> fontDialogHook;

// Only faces that can be stored: the settings file is in code page 932.
void addFaces(QFontDatabase::WritingSystem kind, QStringList& names)
{
    for (const QString& family : QFontDatabase::families(kind))
        if (fitsAnsi(fromQt(family)) && !QFontDatabase::isPrivateFamily(family)) names += family;
}

// The program's own faces, then those for Japanese, then all others.
QStringList faceNames(const Text& current)
{
    QStringList names;
    for (const TextView own : programFontNames())
        names += toQt(own);
    addFaces(QFontDatabase::Japanese, names);
    addFaces(QFontDatabase::Any, names);
    // A stored face that isn't installed is offered too, so that OK doesn't lose
    // it.
    if (!current.empty() && !names.contains(toQt(current))) names.prepend(toQt(current));
    // An installed face may be in several of these lists.
    names.removeDuplicates();
    return names;
}

// Tests find the controls by their object names.
class FontWindow : public QDialog {
public:
    FontWindow(FontDialogFields fields, QWidget* owner) : QDialog(owner), fields_(std::move(fields))
    {
        setObjectName(QStringLiteral("FontDialog"));
        setWindowTitle(QStringLiteral("フォント"));
        auto* rows = new QVBoxLayout(this);
        rows->addLayout(choices(), 1);
        rows->addWidget(sample());
        rows->addWidget(buttons());
        showFields();
        connectChoices();
        showSample();
    }

    FontDialogFields chosen() const
    {
        FontDialogFields taken = fields_;
        taken.FontName = fromQt(faces_->currentItem()->text());
        // Only a size that the user changed is taken, so a fractional one survives.
        if (size_->value() != shownSize()) taken.FontSize = static_cast<float>(size_->value());
        taken.FontBold = bold_->isChecked();
        taken.FontItalic = italic_->isChecked();
        return taken;
    }

private:
    QHBoxLayout* choices()
    {
        auto* columns = new QHBoxLayout;
        columns->addLayout(faceColumn(), 1);
        columns->addLayout(styleColumn());
        return columns;
    }
    QVBoxLayout* faceColumn()
    {
        auto* column = new QVBoxLayout;
        faces_ = new QListWidget(this);
        faces_->setObjectName(QStringLiteral("faces"));
        faces_->addItems(faceNames(fields_.FontName));
        faces_->setMinimumHeight(kListRows * std::max(1, faces_->sizeHintForRow(0)));
        addLabelled(*column, QStringLiteral("フォント名(&F)："), faces_);
        return column;
    }
    QVBoxLayout* styleColumn()
    {
        auto* column = new QVBoxLayout;
        size_ = new QSpinBox(this);
        size_->setObjectName(QStringLiteral("size"));
        size_->setRange(1, static_cast<int>(kLargestSize));
        addLabelled(*column, QStringLiteral("サイズ(&S)："), size_);
        auto* style = new QGroupBox(QStringLiteral("スタイル"), this);
        auto* boxes = new QVBoxLayout(style);
        boxes->addWidget(bold_ = new QCheckBox(QStringLiteral("太字(&B)"), style));
        boxes->addWidget(italic_ = new QCheckBox(QStringLiteral("斜体(&I)"), style));
        bold_->setObjectName(QStringLiteral("bold"));
        italic_->setObjectName(QStringLiteral("italic"));
        column->addWidget(style);
        column->addStretch();
        return column;
    }
    void addLabelled(QVBoxLayout& column, const QString& caption, QWidget* control)
    {
        auto* label = new QLabel(caption, this);
        label->setBuddy(control);
        column.addWidget(label);
        column.addWidget(control);
    }
    QGroupBox* sample()
    {
        auto* frame = new QGroupBox(QStringLiteral("サンプル"), this);
        auto* row = new QVBoxLayout(frame);
        sample_ = new QLabel(QStringLiteral("Ａａあぁアァ亜宇 Aa 123"), frame);
        sample_->setObjectName(QStringLiteral("sample"));
        sample_->setAlignment(Qt::AlignCenter);
        sample_->setMinimumSize(kLeastSample);
        row->addWidget(sample_);
        return frame;
    }
    QDialogButtonBox* buttons()
    {
        auto* box = new QDialogButtonBox(this);
        box->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole)->setDefault(true);
        box->addButton(QStringLiteral("キャンセル"), QDialogButtonBox::RejectRole);
        connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
        return box;
    }

    int shownSize() const { return static_cast<int>(std::nearbyint(fields_.FontSize)); }

    void showFields()
    {
        const auto rows = faces_->findItems(toQt(fields_.FontName), Qt::MatchExactly);
        faces_->setCurrentItem(rows.isEmpty() ? faces_->item(0) : rows.front());
        size_->setValue(shownSize());
        bold_->setChecked(fields_.FontBold);
        italic_->setChecked(fields_.FontItalic);
    }
    void connectChoices()
    {
        connect(faces_, &QListWidget::currentRowChanged, this, [this] { showSample(); });
        connect(size_, &QSpinBox::valueChanged, this, [this] { showSample(); });
        connect(bold_, &QCheckBox::toggled, this, [this] { showSample(); });
        connect(italic_, &QCheckBox::toggled, this, [this] { showSample(); });
    }
    void showSample()
    {
        const FontDialogFields now = chosen();
        sample_->setFont(platformFont({now.FontName, now.FontSize, now.FontBold, now.FontItalic}));
        // The text's own size would be the least one, and the dialog wider than screens.
        sample_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
        const QSize text = sample_->fontMetrics().size(Qt::TextSingleLine, sample_->text());
        sample_->setMinimumSize(kLeastSample.expandedTo(text).boundedTo(kLargestSample));
    }

    FontDialogFields fields_;
    QListWidget* faces_ = nullptr;
    QSpinBox* size_ = nullptr;
    QCheckBox *bold_ = nullptr, *italic_ = nullptr;
    QLabel* sample_ = nullptr;
};

bool ask(FontDialogFields& fields, QWidget* owner)
{
    FontWindow dialog(fields, owner);
    const WaitScope wait([&dialog] { dialog.reject(); });
    const bool accepted = dialog.exec() == QDialog::Accepted;
    rethrowKept();
    if (accepted) fields = dialog.chosen();
    return accepted;
}

}

void FontDialog::setFontSize(float points)
{
    if (!(points > 0) || points > kLargestSize) throw RuntimeError(380);
    fields_.FontSize = points;
}

void FontDialog::ShowFont(QWidget* owner)
{
    if ((Flags & kScreenFonts) == 0)
        throw RuntimeError(kNoFonts, u"フォントがありません。", nullptr);
    beforeWait();
    // A copy, so that a cancelled dialog changes nothing.
    FontDialogFields chosen = fields_;
    if (fontDialogHook ? fontDialogHook(chosen) : ask(chosen, owner))
        fields_ = chosen;
    else if (CancelError)
        throw RuntimeError(kDialogCancelled, u"[キャンセル] が選択されました。", nullptr);
}

void hooks::setFontDialog(std::function<bool(FontDialogFields&)> hook)
{
    fontDialogHook = std::move(hook);
}

}
