// 取り出す: which letters go into which kind of file.
#pragma once
#include "letters/window/book.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace tolvek {

struct TakeOut {
    enum class Form { Book, Html, PlainText, Mbox, EmlFolder };
    Form form = Form::Book;
    bool selectionOnly = false;
    BookSettings book;
    std::filesystem::path target;
};

class TakeOutDialog : public QDialog {
    Q_OBJECT
public:
    TakeOutDialog(std::size_t selected, std::size_t all, QWidget* parent = nullptr);

    void setForm(TakeOut::Form form);
    void setTarget(const QString& path);
    TakeOut choice() const;

private:
    void build(std::size_t selected, std::size_t all);
    void formChanged();
    void browse();
    void acceptIfFree();

    QComboBox* form_ = nullptr;
    QRadioButton* all_ = nullptr;
    QRadioButton* selection_ = nullptr;
    QWidget* bookRow_ = nullptr;
    QComboBox* paper_ = nullptr;
    QLineEdit* title_ = nullptr;
    QLineEdit* target_ = nullptr;
    QPushButton* ok_ = nullptr;
};

}
