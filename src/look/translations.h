#pragma once

#include <QLocale>

class QCoreApplication;

namespace plum {

// Makes captions appear in the language of `locale` where there is a translation; English otherwise. Call it
// before any window is made.
void installTranslation(QCoreApplication &application, const QLocale &locale = QLocale::system());

} // namespace plum
