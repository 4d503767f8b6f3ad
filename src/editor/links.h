// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>

class QUrl;

/// What happens when the user follows a link.
namespace Links
{
enum class Kind {
    Place,  ///< "#name": a place in the document itself
    Web,    ///< a page or an address, given to the desktop
    File,   ///< a file, opened only after a question, since it may be a program
    Refused ///< anything that could do more than show something
};
Kind Kind_Of(const QString &target);

/// What the user typed as a complete target: "www.example.org" gets its scheme, a path becomes a file's address.
QString Completed(const QString &typed);

/// Opens a target that is no Place: asks for a file, says why for a refused one.
void Open(const QString &target);

/// Gives an address to the desktop. @returns whether it took it
bool Start(const QUrl &address);

/// What gives an address to the desktop; tests put another one here.
using Opener = std::function<bool(const QUrl &)>;
void Set_Opener(const Opener &opener);
} // namespace Links
