#include "help/help_pack.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QIODevice>

namespace tolvek {

namespace {

const QByteArray kForm = QByteArrayLiteral("Tolvek help 1\n");
constexpr auto kHash = QCryptographicHash::Sha256;
// Another version of the toolkit must read the same bytes.
constexpr auto kStream = QDataStream::Qt_6_0;

QByteArray checksum(const QByteArray& body)
{
    return QCryptographicHash::hash(body, kHash);
}

}

QByteArray packedHelp(const HelpItems& items)
{
    QByteArray plain;
    QDataStream stream(&plain, QIODevice::WriteOnly);
    stream.setVersion(kStream);
    stream << items;
    const QByteArray body = qCompress(plain);
    return kForm + checksum(body) + body;
}

std::optional<HelpItems> unpackedHelp(const QByteArray& bytes)
{
    const qsizetype head = kForm.size() + QCryptographicHash::hashLength(kHash);
    if (!bytes.startsWith(kForm) || bytes.size() <= head) return {};
    const QByteArray body = bytes.mid(head);
    if (bytes.mid(kForm.size(), head - kForm.size()) != checksum(body)) return {};
    const QByteArray plain = qUncompress(body);
    QDataStream stream(plain);
    stream.setVersion(kStream);
    HelpItems items;
    stream >> items;
    if (stream.status() != QDataStream::Ok) return {};
    return items;
}

}
