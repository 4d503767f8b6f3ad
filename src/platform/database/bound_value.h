// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/sql_tokens.h"
#include "platform/database/sql_values.h"

struct Parameter;

/// What a literal of a statement gives to a parameter of its plan. @throws Engine_Error for a date that is none
Cell Bound_Value(const Token &literal, const Parameter &parameter);
