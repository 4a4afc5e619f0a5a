#include "access/passwordhasher.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

QString PasswordHasher::hash(const QString& password, const QString& salt)
{
    const QByteArray digest =
        QCryptographicHash::hash((salt + password).toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toHex());
}

QString PasswordHasher::makeSalt()
{
    QByteArray bytes(16, Qt::Uninitialized);
    QRandomGenerator* source = QRandomGenerator::system();
    for (char& byte : bytes)
        byte = char(source->generate64() & 0xff);
    return QString::fromLatin1(bytes.toBase64());
}
