#include "look/translations.h"

#include <QCoreApplication>
#include <QTranslator>

// The translations are in this library; a static one has to be asked for them outside any namespace.
static void loadTranslationResource()
{
    Q_INIT_RESOURCE(translations);
}

namespace plum {

using namespace Qt::StringLiterals;

void installTranslation(QCoreApplication &application, const QLocale &locale)
{
    loadTranslationResource();
    auto *translator = new QTranslator(&application);
    if (translator->load(locale, u"plum"_s, u"_"_s, u":/translations"_s))
        QCoreApplication::installTranslator(translator);
}

} // namespace plum
