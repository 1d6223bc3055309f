#include "platform/forms/label.h"
#include "platform/forms/input_hold.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace tolvek {

namespace {

Qt::Alignment qtAlignment(Alignment alignment)
{
    switch (alignment) {
    case Alignment::Right:
        return Qt::AlignRight | Qt::AlignTop;
    case Alignment::Centre:
        return Qt::AlignHCenter | Qt::AlignTop;
    case Alignment::Left:
        break;
    }
    return Qt::AlignLeft | Qt::AlignTop;
}

// The substitute faces are slightly taller than those for which the labels' heights
// were designed; their glyphs are not.
int linePitch(const QLabel& label, int lines)
{
    const int wanted = label.fontMetrics().lineSpacing();
    if (lines * wanted <= label.height()) return wanted;
    // Not below the font's pixel size, where lines would overlap.
    return std::max(label.height() / lines, label.font().pixelSize());
}

}

// Placed below its siblings: on the classic platform labels are painted under
// buttons and lists.
Label::Label(Container container, TextView name, TextView caption) : ControlOf(container, name)
{
    setTextFormat(Qt::PlainText);
    setIndent(0);
    QLabel::setAlignment(qtAlignment(alignment_));
    setCaption(caption);
    lower();
}

void Label::setCaption(TextView caption)
{
    caption_ = caption;
    showCaption();
}

void Label::setTextAlignment(Alignment alignment)
{
    alignment_ = alignment;
    QLabel::setAlignment(qtAlignment(alignment));
    applyGeometry();
}

void Label::setMouseTransparent(bool transparent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents, transparent);
}

void Label::setOverflow(float room)
{
    room_ = room;
    showCaption();
}

// The toolkit names boxes by their label, but not lists and grids.
void Label::setBuddy(QWidget* control)
{
    QLabel::setBuddy(control);
    showCaption();
}

void Label::setClickable(bool clickable)
{
    clickable_ = clickable;
    if (clickable)
        setCursor(Qt::PointingHandCursor);
    else
        unsetCursor();
    update();
}

void Label::press()
{
    if (isEnabled() && isHeard(*this, [this] { press(); })) emit Click();
}

void Label::showCaption()
{
    setText(paintedText(caption_));
    if (QWidget* const named = buddy()) named->setAccessibleName(text());
    if (room_ <= 0) return;
    Control::applyFont(narrowedTo(pixels(room_), askedFont(), text()));
    // The overflow to the left depends on the text.
    Label::applyGeometry();
}

void Label::applyGeometry()
{
    Control::applyGeometry();
    if (room_ <= 0 || alignment_ != Alignment::Right) return;
    QRect box = geometry();
    box.setLeft(std::min(box.left(), box.right() + 1 - sizeHint().width()));
    setGeometry(box);
}

void Label::applyFont(const QFont& font)
{
    Control::applyFont(font);
    showCaption();
}

void Label::paintEvent(QPaintEvent* event)
{
    // With word wrap Qt breaks the lines itself.
    if (wordWrap()) return QLabel::paintEvent(event);
    const QStringList lines = text().split(u'\n');
    const int pitch = linePitch(*this, static_cast<int>(lines.size()));
    QPainter painter(this);
    if (clickable_ && isEnabled() && underMouse()) {
        QFont underlined = font();
        underlined.setUnderline(true);
        painter.setFont(underlined);
    }
    QRect line(0, 0, width(), fontMetrics().height());
    for (const QString& shown : lines) {
        style()->drawItemText(&painter, line, static_cast<int>(alignment()) | Qt::TextSingleLine,
                              palette(), isEnabled(), shown, QPalette::WindowText);
        line.translate(0, pitch);
    }
}

void Label::enterEvent(QEnterEvent* event)
{
    QLabel::enterEvent(event);
    if (clickable_) update();
}

void Label::leaveEvent(QEvent* event)
{
    QLabel::leaveEvent(event);
    if (clickable_) update();
}

// Accepted, so that the release is delivered here too.
void Label::mousePressEvent(QMouseEvent* event)
{
    event->accept();
}

void Label::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        emit Click();
}

}
