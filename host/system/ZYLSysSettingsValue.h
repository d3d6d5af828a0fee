// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QMetaEnum>
#include <QMetaType>
#include <QVariant>

// Strict conversion of a value read from the settings file to the type a setting expects.
// Internal to the system library.
namespace ZYLSysSettingsValue {

// Converts stored (as read from the INI file: mostly text) to target. Returns false, leaving
// result untouched, when the text is not a clean value of that type: "maybe" is no bool,
// "2.5" no int, "abc" no number, "nan" no usable double. enumerator, when valid, checks that
// an integer or key names one of its enumerators.
bool Convert(const QVariant &stored, QMetaType target, const QMetaEnum &enumerator, QVariant *result);

} // namespace ZYLSysSettingsValue
