#include "letters/window/page_setter.h"

#include "platform/forms/fonts.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextLayout>

#include <cmath>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kFootPoints = 8;
constexpr double kLeading = 1.35; // of the font's own line height

QFont fontOf(TextView family, double points, bool bold = false)
{
    QFont font(installedFamily(family));
    font.setPointSizeF(points);
    font.setBold(bold);
    return font;
}

}

PageFonts pageFonts(double textPoints)
{
    return {.title = fontOf(u"ＭＳ Ｐ明朝", textPoints * 2.6),
            .chapter = fontOf(u"ＭＳ Ｐ明朝", textPoints * 1.9),
            .heading = fontOf(u"ＭＳ Ｐゴシック", textPoints * 1.1, true),
            .note = fontOf(u"ＭＳ Ｐゴシック", textPoints * 0.85),
            .text = fontOf(u"ＭＳ 明朝", textPoints)};
}

// The coordinates are the device's own units, from the corner of the printable area.
PageSetter::PageSetter(QPagedPaintDevice& device, QPainter* painter)
    : device_(device), painter_(painter), footFont_(fontOf(u"ＭＳ Ｐ明朝", kFootPoints))
{
    const QRectF page(0, 0, device.width(), device.height());
    body_ = page.adjusted(0, 0, 0, -2 * lineHeight(footFont_));
}

double PageSetter::units(double points) const
{
    return points * device_.logicalDpiY() / 72.0;
}

double PageSetter::lineHeight(const QFont& font) const
{
    return QFontMetricsF(font, &device_).height() * kLeading;
}

void PageSetter::beginPage()
{
    paintFoot();
    if (painter_ != nullptr) device_.newPage();
    ++page_;
    y_ = 0;
    numbered_ = true;
}

void PageSetter::finish()
{
    paintFoot();
}

void PageSetter::paintFoot()
{
    if (painter_ == nullptr || !numbered_) return;
    painter_->setFont(footFont_);
    const QRectF foot(body_.left(), body_.bottom(), body_.width(), 2 * lineHeight(footFont_));
    painter_->drawText(foot, Qt::AlignHCenter | Qt::AlignBottom, QString::number(page_));
}

void PageSetter::skip(double points)
{
    if (y_ > 0) y_ += units(points);
}

void PageSetter::skipToShare(double share)
{
    y_ = std::max(y_, body_.height() * share);
}

void PageSetter::need(double points)
{
    if (y_ > 0 && y_ + units(points) > body_.height()) beginPage();
}

void PageSetter::takeRoom(double height)
{
    if (y_ > 0 && y_ + height > body_.height()) beginPage();
}

void PageSetter::paragraph(const QString& text, const QFont& font, Qt::Alignment alignment)
{
    qsizetype begin = 0;
    for (;;) {
        const qsizetype end = text.indexOf(u'\n', begin);
        logicalLine(text.mid(begin, end < 0 ? -1 : end - begin), font, alignment);
        if (end < 0) return;
        begin = end + 1;
    }
}

void PageSetter::logicalLine(const QString& text, const QFont& font, Qt::Alignment alignment)
{
    const double height = lineHeight(font);
    if (text.trimmed().isEmpty()) {
        if (y_ > 0 && y_ + height <= body_.height()) y_ += height;
        return;
    }
    QTextLayout layout(text, font, &device_);
    QTextOption option(alignment);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(body_.width());
        line.setPosition({0, 0});
        takeRoom(height);
        if (painter_ != nullptr) line.draw(painter_, QPointF(body_.left(), body_.top() + y_));
        y_ += height;
    }
    layout.endLayout();
}

void PageSetter::dottedLine(const QString& left, const QString& right, const QFont& font)
{
    const double height = lineHeight(font);
    takeRoom(height);
    if (painter_ != nullptr) {
        const QFontMetricsF metrics(font, &device_);
        const double dot = metrics.horizontalAdvance(u'.');
        const QRectF place(body_.left(), body_.top() + y_, body_.width(), height);
        painter_->setFont(font);
        painter_->drawText(place, Qt::AlignLeft | Qt::AlignTop, left);
        painter_->drawText(place, Qt::AlignRight | Qt::AlignTop, right);
        QRectF between = place.adjusted(metrics.horizontalAdvance(left) + 2 * dot, 0,
                                        -metrics.horizontalAdvance(right) - 2 * dot, 0);
        QFont spaced = font;
        spaced.setLetterSpacing(QFont::AbsoluteSpacing, dot * 72.0 / device_.logicalDpiX());
        painter_->setFont(spaced);
        // More than fit: aligned to the right, what is too much is cut at the left.
        const QString dots(static_cast<qsizetype>(between.width() / dot) + 1, u'.');
        painter_->setClipRect(between);
        painter_->drawText(between, Qt::AlignRight | Qt::AlignTop | Qt::TextDontClip, dots);
        painter_->setClipping(false);
    }
    y_ += height;
}

void PageSetter::rule()
{
    if (painter_ != nullptr) {
        painter_->setPen(QPen(Qt::gray, units(0.4)));
        painter_->drawLine(QPointF(body_.left(), body_.top() + y_),
                           QPointF(body_.right(), body_.top() + y_));
        painter_->setPen(Qt::black);
    }
    y_ += units(4);
}

}
