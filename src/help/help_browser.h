// Shows the pages of the manual, follows their links, and marks words in them.
#pragma once
#include "help/help_book.h"

#include <QImage>
#include <QTextBrowser>

namespace tolvek {

class HelpBrowser : public QTextBrowser {
    Q_OBJECT
public:
    explicit HelpBrowser(QWidget* parent);

    void setBook(const HelpBook* book); // the book must outlive the browser
    void open(const QString& address);
    // Marks the words on this page and on those that follow.
    void mark(std::vector<Text> words);
    void toNextMark(int step); // 1 forwards, -1 backwards; goes round
    int markCount() const { return static_cast<int>(marks_.size()); }
    void resetZoom();

    QVariant loadResource(int type, const QUrl& address) override;

private:
    QImage fitted(const QImage& picture) const;
    void paintMarks();

    const HelpBook* book_ = nullptr;
    std::vector<Text> words_;
    std::vector<int> marks_; // the positions
};

}
