// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A text as the content of an XML element or of an attribute between double quotation marks. Characters that XML 1.0
/// does not know are left out, lone halves of a pair become U+FFFD.
QString Xml_Text(QStringView text);
