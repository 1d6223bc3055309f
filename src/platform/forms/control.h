// The properties that all controls share: the classic platform's properties on a Qt
// widget.
//
// A control belongs to its container (a form or a frame) and is destroyed when the
// form unloads. Left, Top, Width and Height are in twips, relative to the
// container, and are returned as they were set. The name is the widget's
// objectName, by which tests find it.
#pragma once
#include "platform/forms/colours.h"
#include "platform/forms/fonts.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/twips.h"

#include <QWidget>

namespace tolvek {

class Form;

// Where a control is placed: a loaded form (or one that is building its controls),
// a frame, or any widget.
class Container {
public:
    Container(Form& form);                           // NOLINT: implicit
    Container(QWidget& widget) : widget_(&widget) {} // NOLINT
    Container(QWidget* widget) : widget_(widget) {}  // NOLINT
    QWidget* widget() const { return widget_; }

private:
    QWidget* widget_;
};

class Control {
public:
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    Text Name() const;
    float Left() const { return left_; }
    float Top() const { return top_; }
    float Width() const { return width_; }
    float Height() const { return height_; }
    void setLeft(float twips);
    void setTop(float twips);
    void setWidth(float twips);
    void setHeight(float twips);
    void Move(float left, float top, float width, float height);

    bool Enabled() const; // as set, whatever the state of the container
    void setEnabled(bool enabled);
    bool Visible() const; // as set
    void setVisible(bool visible);

    const Text& ToolTipText() const { return toolTip_; } // plain text, never markup
    void setToolTipText(TextView text);
    // What the tip explains below that text: when the control does nothing, for example.
    const Text& ToolTipNote() const { return toolTipNote_; }
    void setToolTipNote(TextView note);
    // What a screen reader calls a control that has neither a caption nor a label.
    void setSpokenName(TextView name);

    Colour ForeColor() const { return foreColor_; }
    Colour BackColor() const { return backColor_; }
    void setForeColor(Colour colour);
    void setBackColor(Colour colour);

    const Text& FontName() const { return font_.name; } // as set, never the substitute's
    float FontSize() const { return font_.size; }
    bool FontBold() const { return font_.bold; }
    bool FontItalic() const { return font_.italic; }
    void setFontName(TextView name);
    void setFontSize(float points);
    void setFontBold(bool bold);
    void setFontItalic(bool italic);
    void setFontOf(TextView name, float points, bool bold = false, bool italic = false);

    // The position in the tab order; -1 (the default) comes after all others.
    int TabIndex() const { return tabIndex_; }
    void setTabIndex(int index) { tabIndex_ = index; }

    // Has no effect on a disabled control.
    void SetFocus();
    bool HasFocus() const;

    QWidget& widget() const { return *widget_; }

protected:
    Control(QWidget& widget, TextView name);
    // Converts the twips to pixels and applies them to the widget.
    virtual void applyGeometry();
    virtual void applyFont(const QFont& font);
    QFont askedFont() const { return platformFont(font_); }

private:
    void showToolTip();

    QWidget* widget_;
    float left_ = 0, top_ = 0, width_ = 0, height_ = 0;
    Text toolTip_;
    Text toolTipNote_;
    Colour foreColor_ = kWindowText;
    Colour backColor_ = kButtonFace;
    FontChoice font_;
    int tabIndex_ = -1;
};

// Combines a Qt widget class with Control. If both have a member of one name,
// Control's is used.
template <class Base> class ControlOf : public Base, public Control {
public:
    using Control::setEnabled;
    void setVisible(bool visible) override { Base::setVisible(visible); }

protected:
    ControlOf(Container container, TextView name) : Base(container.widget()), Control(*this, name)
    {
    }
};

// Sets the tab order of all controls below `root` by their TabIndex.
void applyTabOrder(QWidget& root);

}
