#include "letters/window/letter_texts.h"

#include "letters/library.h"
#include "platform/forms/qt_text.h"

#include <QDate>
#include <QLocale>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

bool hasValue(TextView value)
{
    return !value.empty() && value != kNoLetterValue;
}

QString nameAndAddress(TextView name, TextView address)
{
    if (!hasValue(name)) return toQt(address);
    if (!hasValue(address)) return toQt(name);
    return toQt(name) + u" <"_s + toQt(address) + u">"_s;
}

QString nameOf(TextView name, TextView address)
{
    return toQt(hasValue(name) ? name : address);
}

// The hour may have one digit; minutes and seconds have two.
QString clockText(const Letter& letter)
{
    if (letter.time.size() < 5) return {};
    const QString time = toQt(letter.time).rightJustified(6, u'0');
    return time.left(2) + u":"_s + time.mid(2, 2);
}

QString numberOr(int number, QChar unknown, int width)
{
    return number == 0 ? QString(width, unknown)
                       : QString::number(number).rightJustified(width, u'0');
}

int dayOf(const Letter& letter)
{
    return letter.date.size() == 8 ? toQt(letter.date.substr(6)).toInt() : 0;
}

}

QString shortDate(const Letter& letter)
{
    return numberOr(letter.year(), u'-', 4) + u"/"_s + numberOr(letter.month(), u'-', 2) + u"/"_s +
           numberOr(dayOf(letter), u'-', 2) + u" "_s + clockText(letter);
}

QString longDate(const Letter& letter)
{
    static const QString days = u"月火水木金土日"_s;
    if (letter.month() == 0) return yearText(letter.year());
    QString text = yearText(letter.year()) + QString::number(letter.month()) + u"月"_s +
                   QString::number(dayOf(letter)) + u"日"_s;
    const QDate date(letter.year(), letter.month(), dayOf(letter));
    if (date.isValid()) text += u"（"_s + days.mid(date.dayOfWeek() - 1, 1) + u"）"_s;
    return text + u" "_s + clockText(letter);
}

QString senderText(const Letter& letter)
{
    return nameAndAddress(letter.senderName, letter.senderAddress);
}

QString receiverText(const Letter& letter)
{
    return nameAndAddress(letter.receiverName, letter.receiverAddress);
}

QString namesText(const Library& library, const Letter& letter)
{
    const QString friendName = toQt(library.people().at(letter.person).name);
    const QString sender =
        letter.sent ? nameOf(letter.senderName, letter.senderAddress) : friendName;
    const QString receiver =
        letter.sent ? friendName : nameOf(letter.receiverName, letter.receiverAddress);
    return sender + u" → "_s + receiver;
}

QString subjectText(const Letter& letter)
{
    return letter.subject.empty() ? u"（件名なし）"_s : paintedText(letter.subject, u' ');
}

QString yearText(int year)
{
    return year == 0 ? u"日付不明"_s : QString::number(year) + u"年"_s;
}

QString monthText(int month)
{
    return yearText(month / 100) + QString::number(month % 100) + u"月"_s;
}

QString countText(std::size_t count)
{
    return QLocale(QLocale::English).toString(static_cast<qulonglong>(count));
}

}
