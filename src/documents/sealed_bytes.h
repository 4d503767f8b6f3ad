// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

/// Bytes sealed with a password: a key stretched by PBKDF2 (RFC 8018) with HMAC-SHA-256, the stream of a keyed SHA-512
/// in counter mode, and an HMAC-SHA-256 over everything else (encrypt, then authenticate).
class Sealer
{
public:
    /// Stretches the password once; sealing and opening with the same salt is quick afterwards.
    explicit Sealer(const QString &password, const QByteArray &salt = {});

    [[nodiscard]] QByteArray Seal(const QByteArray &plain) const;
    /// Salt of sealed bytes, "" when they are none.
    static QByteArray Salt_Of(const QByteArray &sealed);
    /// Nothing when the password is another one or a byte was changed.
    [[nodiscard]] std::optional<QByteArray> Open(const QByteArray &sealed) const;

private:
    [[nodiscard]] QByteArray Streamed(const QByteArray &bytes, const QByteArray &nonce) const;

    QByteArray m_salt;
    QByteArray m_cipherKey;
    QByteArray m_sealKey;
};
