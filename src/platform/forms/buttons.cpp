#include "platform/forms/buttons.h"
#include "platform/forms/input_hold.h"

namespace tolvek {

namespace {

constexpr int kCaptionMargin = 5; // pixels on each side

}

CommandButton::CommandButton(Container container, TextView name, TextView caption)
    : ControlOf(container, name)
{
    setCaption(caption);
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, [this] {
        // clicked also comes from shortcuts and assistive programs, which no event
        // filter sees.
        if (isHeard(*this, [this] { click(); })) emit Click();
    });
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
    ControlOf::applyFont(font);
    fitCaption();
}

void CommandButton::fitCaption()
{
    setFont(narrowedTo(pixels(Width()) - 2 * kCaptionMargin, askedFont(), text()));
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

// Called by Qt for the user's click, before clicked is emitted.
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

// Qt doesn't let the set one of several exclusive buttons be cleared.
void OptionButton::setValue(bool value)
{
    setAutoExclusive(value);
    setChecked(value);
    setAutoExclusive(true);
}

}
