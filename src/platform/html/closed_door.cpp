// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/html/closed_door.h"

#include <QUrl>
