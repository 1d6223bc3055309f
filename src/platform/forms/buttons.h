// Command buttons, check boxes and option buttons. In captions "&" marks the access
// key, as in menus.
#pragma once
#include "platform/forms/control.h"
#include "platform/runtime/int16.h"

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>

namespace tolvek {

// Never becomes the default button by itself: Enter elsewhere in the form doesn't
// press it. A caption that is wider than the button is set in a narrower face and
// not cut.
class CommandButton : public ControlOf<QPushButton> {
    Q_OBJECT
public:
    CommandButton(Container container, TextView name, TextView caption = {});
    Text Caption() const { return fromQt(text()); }
    void setCaption(TextView caption);

signals:
    void Click();

protected:
    void applyGeometry() override;
    void applyFont(const QFont& font) override;

private:
    void fitCaption();
};

// Any 16-bit value is kept and returned: 0 is shown unticked, others ticked. A
// user's click changes a ticked box to 0 and an unticked one to 1, then fires
// Click.
class CheckBox : public ControlOf<QCheckBox> {
    Q_OBJECT
public:
    CheckBox(Container container, TextView name, TextView caption = {});
    Text Caption() const { return fromQt(text()); }
    void setCaption(TextView caption) { setText(toQt(caption)); }
    Int16 Value() const { return value_; }
    void setValue(Int16 value);

signals:
    void Click();

protected:
    void nextCheckState() override;

private:
    Int16 value_ = 0;
};

// One of the option buttons in a container. Setting it clears the others; it can
// also be cleared itself, so that none is set. Only the user fires Click.
class OptionButton : public ControlOf<QRadioButton> {
    Q_OBJECT
public:
    OptionButton(Container container, TextView name, TextView caption = {});
    Text Caption() const { return fromQt(text()); }
    void setCaption(TextView caption) { setText(toQt(caption)); }
    bool Value() const { return isChecked(); }
    void setValue(bool value);

signals:
    void Click();
};

}
