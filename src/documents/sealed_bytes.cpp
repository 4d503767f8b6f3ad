// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/sealed_bytes.h"

#include <QCryptographicHash>
#include <QMessageAuthenticationCode>
#include <QRandomGenerator>
#include <QtEndian>
#include <algorithm>

namespace
{
constexpr qsizetype Salt_Size = 16;
constexpr qsizetype Nonce_Size = 16;
constexpr qsizetype Mark_Size = 32;
constexpr int Rounds = 30'000;

QByteArray Random_Bytes(qsizetype size)
{
    QByteArray bytes(size, '\0');
    QRandomGenerator *source = QRandomGenerator::system();
    std::generate(bytes.begin(), bytes.end(), [source] { return static_cast<char>(source->generate()); });
    return bytes;
}

QByteArray Hmac(const QByteArray &key, const QByteArray &message)
{
    return QMessageAuthenticationCode::hash(message, key, QCryptographicHash::Sha256);
}

/// One block of PBKDF2: RFC 8018, 5.2.
QByteArray Stretched(const QByteArray &password, const QByteArray &salt, quint32 block)
{
    QByteArray number(4, '\0');
    qToBigEndian(block, number.data());
    QByteArray last = Hmac(password, salt + number);
    QByteArray sum = last;
    for (int round = 1; round < Rounds; ++round) {
        last = Hmac(password, last);
        for (qsizetype i = 0; i < sum.size(); ++i)
            sum[i] = static_cast<char>(sum[i] ^ last[i]);
    }
    return sum;
}
} // namespace

Sealer::Sealer(const QString &password, const QByteArray &salt)
    : m_salt(salt.isEmpty() ? Random_Bytes(Salt_Size) : salt), m_cipherKey(Stretched(password.toUtf8(), m_salt, 1)),
      m_sealKey(Stretched(password.toUtf8(), m_salt, 2))
{
}

QByteArray Sealer::Seal(const QByteArray &plain) const
{
    const QByteArray nonce = Random_Bytes(Nonce_Size);
    const QByteArray body = m_salt + nonce + Streamed(plain, nonce);
    return Hmac(m_sealKey, body) + body;
}

QByteArray Sealer::Salt_Of(const QByteArray &sealed)
{
    return sealed.size() < Mark_Size + Salt_Size + Nonce_Size ? QByteArray() : sealed.mid(Mark_Size, Salt_Size);
}

std::optional<QByteArray> Sealer::Open(const QByteArray &sealed) const
{
    if (Salt_Of(sealed) != m_salt || Hmac(m_sealKey, sealed.mid(Mark_Size)) != sealed.left(Mark_Size))
        return std::nullopt;
    const qsizetype start = Mark_Size + Salt_Size + Nonce_Size;
    return Streamed(sealed.mid(start), sealed.mid(Mark_Size + Salt_Size, Nonce_Size));
}

QByteArray Sealer::Streamed(const QByteArray &bytes, const QByteArray &nonce) const
{
    QByteArray result = bytes;
    QByteArray counter(8, '\0');
    QByteArray block;
    constexpr qsizetype Block_Size = 64;
    for (qsizetype i = 0; i < result.size(); ++i) {
        if (i % Block_Size == 0) {
            qToLittleEndian(quint64(i / Block_Size), counter.data());
            block = QCryptographicHash::hash(m_cipherKey + nonce + counter, QCryptographicHash::Sha512);
        }
        result[i] = static_cast<char>(result[i] ^ block[i % Block_Size]);
    }
    return result;
}
