// Sets lines of text on the pages of a paint device: breaks paragraphs into lines, lines
// into pages, and adds a page number to each page.
//
// Without a painter it only measures, with the same result.
#pragma once
#include <QFont>
#include <QRectF>
#include <QString>

class QPagedPaintDevice;
class QPainter;

namespace tolvek {

struct PageFonts {
    QFont title, chapter, heading, note, text;
};
PageFonts pageFonts(double textPoints);

class PageSetter {
public:
    // The painter, if any, is active on the device.
    PageSetter(QPagedPaintDevice& device, QPainter* painter);

    int page() const { return page_; } // the one being filled, from 1
    void beginPage();
    // A page without a number at its foot, as the title page.
    void leaveOutNumber() { numbered_ = false; }
    void finish(); // the last page's foot

    void skip(double points);
    void skipToShare(double share); // of the page's height
    // Begins a page if less than this is left.
    void need(double points);

    // Wrapped to the width; each line may begin a page. Line breaks of the text stay.
    void paragraph(const QString& text, const QFont& font, Qt::Alignment alignment = Qt::AlignLeft);
    // One line: left, dots, right.
    void dottedLine(const QString& left, const QString& right, const QFont& font);
    void rule();

    double lineHeight(const QFont& font) const;

private:
    void logicalLine(const QString& text, const QFont& font, Qt::Alignment alignment);
    void takeRoom(double height);
    void paintFoot();
    double units(double points) const;

    QPagedPaintDevice& device_;
    QPainter* painter_;
    QRectF body_;
    QFont footFont_;
    double y_ = 0;
    int page_ = 1;
    bool numbered_ = true;
};

}
