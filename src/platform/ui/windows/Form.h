// SPDX-License-Identifier: BSD-3-Clause
// Forms as Qt Designer writes them, with the strings of a bundle.
#pragma once

#include <memory>

#include <QByteArray>
#include <QString>
#include <QWidget>

#include "platform/CoreFoundation.h"

namespace platform {

// The form with the texts that are keys (IDS_...) replaced by the bundle's strings; empty when it is
// no well-formed XML, and why says so.
QByteArray LocalizeForm(const QByteArray& form, CFBundleRef bundle, QString* why);
// The widgets of the form, hidden; null, with why, when it is not a form.
std::unique_ptr<QWidget> MakeFormWidget(const QByteArray& form, QString* why);

} // namespace platform
