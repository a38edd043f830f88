#pragma once

#include "platform/paths.h"

#include <QSet>

namespace plum::kit {

// Paths on which nothing outside one folder can be changed. Each file that is named gets a copy below that
// folder, and its path is the copy's; what is made, changed and deleted is the copy.
class ScratchPaths final : public Paths
{
public:
    // `folder` is empty and the system's own way of writing it.
    ScratchPaths(const Paths &real, QString folder)
        : m_real(real)
        , m_folder(std::move(folder))
    {
    }

    QString programFolder() const override { return m_real.programFolder(); }
    QString toSystem(const QString &path) const override;
    bool interpretsNames() const override { return m_real.interpretsNames(); }

private:
    QString copyOf(const QString &real) const;
    QString realOf(const QString &copy) const;
    void fetch(const QString &real, const QString &copy) const;

    const Paths &m_real;
    QString m_folder;
    mutable QSet<QString> m_fetched; // what a run does with a copy is not undone by naming it again
};

} // namespace plum::kit
