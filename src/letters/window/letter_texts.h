// How a letter's fields are written in the window, in the book and in print.
#pragma once
#include "letters/letter.h"

#include <QString>

namespace tolvek {

class Library;

QString shortDate(const Letter& letter); // "2000/02/15 10:11"; unknown parts as "-"
QString longDate(const Letter& letter);  // "2000年2月15日（火） 10:11"
// A name and address as one; the friend book's name first if there is one.
QString senderText(const Letter& letter);
QString receiverText(const Letter& letter);
// "はな → たろう", by the names alone.
QString namesText(const Library& library, const Letter& letter);
QString subjectText(const Letter& letter); // "（件名なし）" for an empty one
QString yearText(int year);                // "2000年", "日付不明" for 0
QString monthText(int month);              // yyyymm as "2000年2月"
QString countText(std::size_t count);      // "12,345"

}
