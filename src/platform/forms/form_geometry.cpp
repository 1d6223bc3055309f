// Position and size of a form: converts between twips as set by code and pixels of
// the window.
#include "platform/forms/events.h"
#include "platform/forms/form.h"
#include "platform/forms/form_window.h"
#include "platform/forms/screen.h"
#include "platform/runtime/runtime_error.h"

#include <algorithm>
#include <cmath>

namespace tolvek {

namespace {

float frameTwips(BorderStyle border, int sized)
{
    return border == BorderStyle::None ? 0.0F : static_cast<float>(sized);
}

// If the pixels agree with the value set by code, that exact value is returned.
float twipsOf(int now, float asSet, float frame)
{
    return now == pixels(asSet - frame) ? asSet : twips(now) + frame;
}

}

QSize Form::clientPixels() const
{
    return {std::max(1, pixels(width_ - frameTwips(border_, kFrameTwipsWide))),
            std::max(1, pixels(height_ - frameTwips(border_, frameHigh_)))};
}

void Form::setLeft(float twips)
{
    left_ = leftAsSet_ = std::nearbyint(twips);
    placed_ = true;
    applyPosition();
}

void Form::setTop(float twips)
{
    top_ = topAsSet_ = std::nearbyint(twips);
    placed_ = true;
    applyPosition();
}

void Form::setWidth(float twips)
{
    setSize(width_, widthAsSet_, twips);
}

void Form::setHeight(float twips)
{
    setSize(height_, heightAsSet_, twips);
}

void Form::setSize(float& side, float& asSet, float twips)
{
    const float before = side;
    side = asSet = std::nearbyint(twips);
    if (side == before) return;
    applySize();
    fireResize();
}

void Form::CentreOnScreen()
{
    setLeft((Screen::Width() - width_) / 2);
    setTop((Screen::Height() - height_) / 2);
}

void Form::CentreOver(const Form& owner)
{
    setLeft(owner.left_ + (owner.width_ - width_) / 2);
    setTop(owner.top_ + (owner.height_ - height_) / 2);
}

void Form::applySize()
{
    if (!window_) return;
    if (WindowState() == 0)
        built().setClientSize(clientPixels(), border_ != BorderStyle::Sizable);
    else
        built().setContentSize(clientPixels());
}

// Of the position set last by code.
QPoint Form::cornerPixels() const
{
    return built().fitting({pixels(leftAsSet_), pixels(topAsSet_)});
}

void Form::applyPosition()
{
    // A form without a position of its own is placed by the window manager.
    if (window_ && placed_ && WindowState() == 0) window_->move(cornerPixels());
}

int Form::WindowState() const
{
    if (!Visible()) return static_cast<int>(state_);
    if (window_->isMinimized()) return static_cast<int>(WindowStates::Minimized);
    return static_cast<int>(window_->isMaximized() ? WindowStates::Maximized
                                                   : WindowStates::Normal);
}

void Form::setWindowState(int state)
{
    if (state < 0 || state > 2) throw RuntimeError(380);
    state_ = static_cast<WindowStates>(state);
    if (Visible()) present();
}

void Form::windowResized(const QSize& client)
{
    if (!shown_ || window_->isMinimized() || client == clientPixels()) return;
    // Each side separately: dragging one edge must not round the other side.
    if (client.width() != clientPixels().width())
        width_ = twipsOf(client.width(), widthAsSet_, frameTwips(border_, kFrameTwipsWide));
    if (client.height() != clientPixels().height())
        height_ = twipsOf(client.height(), heightAsSet_, frameTwips(border_, frameHigh_));
    fireResize();
}

// A window that is minimised or not yet on the screen keeps its position.
void Form::windowMoved(const QPoint& corner)
{
    if (!Visible() || window_->isMinimized()) return;
    left_ = corner.x() == cornerPixels().x() ? leftAsSet_ : twips(corner.x());
    top_ = corner.y() == cornerPixels().y() ? topAsSet_ : twips(corner.y());
}

void Form::fireResize()
{
    if (window_) runEvent([this] { Form_Resize(); });
}

}
