#pragma once

#include <QPluginLoader>

namespace plum {

// A part of the program in a shared library of its own beside the executable, loaded when it is first asked
// for: a run that does not need it pays neither its time nor its memory. Once loaded it stays.
class LoadedModule
{
public:
    // `name` is the library's file name without its extension.
    explicit LoadedModule(const QString &name);

    // The library's object; null when the library is missing or does not fit this program.
    QObject *object() { return m_loader.instance(); }

    // Why there is no object, in one line.
    QString problem() const { return m_loader.errorString(); }

private:
    QPluginLoader m_loader;
};

} // namespace plum
