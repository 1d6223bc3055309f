#include "platform/forms/buttons.h"

#include <algorithm>

namespace tolvek {

namespace {

constexpr int kCaptionMargin = 5; // pixels on either side
constexpr int kNarrowest = 70;    // per cent of the face's width

}

CommandButton::CommandButton(Container container, TextView name, TextView caption)
    : ControlOf(container, name)
{
    setCaption(caption);
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, &CommandButton::Click);
}

void CommandButton::setCaption(TextView caption)
{
    setText(toQt(caption));
    fitCaption();
}

void CommandButton::applyGeometry()
{
    ControlOf::applyGeometry();
    fitCaption();
}

void CommandButton::applyFont(const QFont& font)
{
    font_ = font;
    fitCaption();
}

void CommandButton::fitCaption()
{
    const int room = pixels(Width()) - 2 * kCaptionMargin;
    const int wide = QFontMetrics(font_).horizontalAdvance(text());
    QFont fitting = font_;
    if (room > 0 && wide > room) fitting.setStretch(std::max(kNarrowest, 100 * room / wide));
    setFont(fitting);
}

CheckBox::CheckBox(Container container, TextView name, TextView caption)
    : ControlOf(container, name)
{
    setCaption(caption);
    connect(this, &QCheckBox::clicked, this, &CheckBox::Click);
}

void CheckBox::setValue(Int16 value)
{
    value_ = value;
    setChecked(value != 0);
}

void CheckBox::nextCheckState()
{
    setValue(value_ == 0 ? 1 : 0);
}

OptionButton::OptionButton(Container container, TextView name, TextView caption)
    : ControlOf(container, name)
{
    setCaption(caption);
    connect(this, &QRadioButton::clicked, this, &OptionButton::Click);
}

// Among exclusive buttons Qt doesn't let the set one be cleared.
void OptionButton::setValue(bool value)
{
    setAutoExclusive(value);
    setChecked(value);
    setAutoExclusive(true);
}

}
