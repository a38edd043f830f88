#pragma once

#include "look/translations.h"

#include <QCoreApplication>
#include <QTranslator>

namespace plum::test {

// A Chinese session, for as long as it lives.
class ChineseSession
{
public:
    ChineseSession()
    {
        installTranslation(*QCoreApplication::instance(), QLocale(QLocale::Chinese, QLocale::China));
    }
    ~ChineseSession()
    {
        for (QTranslator *each : QCoreApplication::instance()->findChildren<QTranslator *>()) {
            if (!m_before.contains(each))
                delete each;
        }
    }
    Q_DISABLE_COPY_MOVE(ChineseSession)

private:
    QList<QTranslator *> m_before = QCoreApplication::instance()->findChildren<QTranslator *>();
};

} // namespace plum::test
