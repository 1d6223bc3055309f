#include "platform/forms/control.h"
#include "platform/forms/form.h"

#include <QAbstractScrollArea>
#include <QComboBox>

#include <algorithm>
#include <vector>

namespace tolvek {

Container::Container(Form& form) : widget_(&form.client()) {}

Control::Control(QWidget& widget, TextView name) : widget_(&widget)
{
    widget_->setObjectName(toQt(name));
    // Otherwise the control would inherit its container's font.
    widget_->setFont(platformFont(font_));
}

Text Control::Name() const
{
    return fromQt(widget_->objectName());
}

void Control::applyGeometry()
{
    // Both edges are rounded: a width rounded by itself may end a pixel beyond the
    // container, which cuts the border.
    const QPoint corner(pixels(left_), pixels(top_));
    const QPoint end(pixels(left_ + width_), pixels(top_ + height_));
    widget_->setGeometry(corner.x(), corner.y(), end.x() - corner.x(), end.y() - corner.y());
}

void Control::setLeft(float twips)
{
    Move(twips, top_, width_, height_);
}
void Control::setTop(float twips)
{
    Move(left_, twips, width_, height_);
}
void Control::setWidth(float twips)
{
    Move(left_, top_, twips, height_);
}
void Control::setHeight(float twips)
{
    Move(left_, top_, width_, twips);
}

void Control::Move(float left, float top, float width, float height)
{
    left_ = left;
    top_ = top;
    width_ = width;
    height_ = height;
    applyGeometry();
}

bool Control::Enabled() const
{
    // isEnabled() would also be false in a disabled container.
    return !widget_->testAttribute(Qt::WA_ForceDisabled);
}

void Control::setEnabled(bool enabled)
{
    widget_->setEnabled(enabled);
}

bool Control::Visible() const
{
    // isVisible() is false until the form is shown; only an explicit hide counts.
    return !(widget_->testAttribute(Qt::WA_WState_ExplicitShowHide) && widget_->isHidden());
}

void Control::setVisible(bool visible)
{
    widget_->setVisible(visible);
}

void Control::setToolTipText(TextView text)
{
    toolTip_ = text;
    showToolTip();
}

void Control::setToolTipNote(TextView note)
{
    toolTipNote_ = note;
    showToolTip();
}

void Control::showToolTip()
{
    const bool both = !toolTip_.empty() && !toolTipNote_.empty();
    widget_->setToolTip(tipText(toQt(toolTip_ + (both ? u"\n" : u"") + toolTipNote_)));
}

void Control::setSpokenName(TextView name)
{
    widget_->setAccessibleName(toQt(name));
    // A combo box is called by its present text, whatever its name.
    if (qobject_cast<QComboBox*>(widget_)) widget_->setAccessibleDescription(toQt(name));
}

// The disabled group keeps the style's grey, as controls of the classic platform
// do.
void Control::setForeColor(Colour colour)
{
    foreColor_ = colour;
    QPalette palette = widget_->palette();
    std::vector roles{QPalette::Text};
    // The other roles of a box with scroll bars are those of their arrows.
    if (!qobject_cast<QAbstractScrollArea*>(widget_))
        roles.insert(roles.end(), {QPalette::WindowText, QPalette::ButtonText});
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        for (const auto role : roles)
            palette.setColor(group, role, colourOf(colour));
    widget_->setPalette(palette);
}

void Control::setBackColor(Colour colour)
{
    backColor_ = colour;
    QPalette palette = widget_->palette();
    // The widget classes paint their background with different roles.
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button})
        palette.setColor(role, colourOf(colour));
    widget_->setPalette(palette);
    widget_->setAutoFillBackground(true);
}

void Control::applyFont(const QFont& font)
{
    widget_->setFont(font);
}

void Control::setFontName(TextView name)
{
    setFontOf(name, font_.size, font_.bold, font_.italic);
}

void Control::setFontSize(float points)
{
    setFontOf(font_.name, points, font_.bold, font_.italic);
}

void Control::setFontBold(bool bold)
{
    setFontOf(font_.name, font_.size, bold, font_.italic);
}

void Control::setFontItalic(bool italic)
{
    setFontOf(font_.name, font_.size, font_.bold, italic);
}

void Control::setFontOf(TextView name, float points, bool bold, bool italic)
{
    font_ = FontChoice{Text(name), points, bold, italic};
    applyFont(platformFont(font_));
}

void Control::SetFocus()
{
    if (widget_->isEnabled()) widget_->setFocus(Qt::OtherFocusReason);
}

bool Control::HasFocus() const
{
    // Also true in a window that isn't active, where hasFocus() is false.
    return widget_->hasFocus() || widget_->window()->focusWidget() == widget_;
}

void applyTabOrder(QWidget& root)
{
    std::vector<Control*> order;
    for (QWidget* child : root.findChildren<QWidget*>())
        if (auto* control = dynamic_cast<Control*>(child); control && control->TabIndex() >= 0)
            order.push_back(control);
    // Stable: controls with equal indexes keep the order of their creation.
    std::stable_sort(order.begin(), order.end(), [](const Control* a, const Control* b) {
        return a->TabIndex() < b->TabIndex();
    });
    for (std::size_t i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(&order[i - 1]->widget(), &order[i]->widget());
}

}
