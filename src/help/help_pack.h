// The form of the help file: the manual's pages and pictures in one file.
//
// A line that names the form, a checksum of all that follows, and the compressed
// items. Every change of a byte is noticed before anything else is read from it.
#pragma once
#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>

namespace tolvek {

using HelpItems = QMap<QString, QByteArray>; // by file name

QByteArray packedHelp(const HelpItems& items);
// None if the bytes aren't a whole help file.
std::optional<HelpItems> unpackedHelp(const QByteArray& bytes);

}
