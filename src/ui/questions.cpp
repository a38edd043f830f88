#include "ui/questions.h"

#include "library/app_library.h"
#include "ui/shurubox.h"

#include <utility>

namespace plum {

Questions::Questions(Shell &shell, const AppLibrary &library, std::function<QWidget *()> owner)
    : m_shell(shell)
    , m_library(library)
    , m_owner(std::move(owner))
{
}

Questions::~Questions()
{
    delete m_box;
}

shurubox &Questions::freshBox()
{
    if (m_box) {
        disconnect(m_box, &shurubox::abandoned, this, nullptr);
        m_box->close();
    }
    m_box = new shurubox(m_shell,
        {.exists = [this](const QString &keyword) { return m_library.exists(keyword); },
            .isUsableName = [](const QString &keyword) { return AppLibrary::isFolderName(keyword); }},
        m_owner());
    connect(m_box, &shurubox::unloaded, this, [this] { m_box.clear(); });
    connect(m_box, &shurubox::abandoned, this, &Questions::abandoned);
    connect(m_box, &shurubox::inputConfirmed, this, &Questions::inputConfirmed);
    connect(m_box, &shurubox::inputClosed, this, &Questions::inputClosed);
    connect(m_box, &shurubox::nameConfirmed, this,
        [this](const QString &name) { Q_EMIT nameConfirmed(name, true); });
    connect(m_box, &shurubox::nameConfirmedUnchecked, this,
        [this](const QString &name) { Q_EMIT nameConfirmed(name, false); });
    return *m_box;
}

void Questions::showInput(const QString &prompt, const QString &variable)
{
    freshBox().showInput(prompt, variable);
}

void Questions::showTip(const QString &text)
{
    freshBox().showTip(text);
}

void Questions::explainTip(const QString &keys)
{
    if (m_box)
        m_box->explainKeys(keys);
}

void Questions::askPackageName(const QString &keyword, const QString &package)
{
    freshBox().showName(keyword, package);
}

bool Questions::isAsking() const
{
    return !m_box.isNull();
}

QString Questions::entryText() const
{
    return m_box ? m_box->entryText() : QString();
}

} // namespace plum
