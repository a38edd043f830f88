#pragma once

#include "engine/script_folders.h"
#include "platform/paths.h"

namespace plum::recording {

// The places of a program folder, spelled out once more: what scripts see of them is fixed.
class RecordingFolders final : public ScriptFolders
{
public:
    explicit RecordingFolders(const Paths &paths)
        : m_paths(paths)
    {
    }

    QString apps() const override { return m_paths.programFolder() + QStringLiteral("\\config\\apps"); }
    QString app(const QString &keyword) const override { return apps() + u'\\' + keyword; }
    QString appScript(const QString &keyword) const override
    {
        return QStringLiteral("config\\apps\\%1\\main.wf").arg(keyword);
    }
    QString browserHelper() const override
    {
        return m_paths.programFolder() + QStringLiteral("\\config\\module\\net\\browser\\browser.exe");
    }
    QString downloadHelper() const override
    {
        return m_paths.programFolder() + QStringLiteral("\\config\\module\\download\\download.exe");
    }
    QString downloads() const override
    {
        return m_paths.programFolder() + QStringLiteral("\\config\\module\\download\\tmp");
    }

private:
    const Paths &m_paths;
};

} // namespace plum::recording
