// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QVariant>

class QUrl;

namespace Html
{
/// The parent of every text document that takes foreign content. The toolkit asks a document's parent for what its text
/// names (pictures, style sheets) and opens the file itself where that answers nothing; this one answers with no bytes.
class Closed_Door : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE QVariant loadResource(int /*type*/, const QUrl & /*name*/) { return Nothing(); }
    /// The answer that keeps the toolkit from looking further.
    static QVariant Nothing() { return QByteArray(); }
};
} // namespace Html
