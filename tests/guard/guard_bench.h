#pragma once

#include "guard/granted_limit.h"
#include "sheet/compute_sheet.h"
#include "support/script_bench.h"

#include <QTemporaryDir>

#include <optional>

namespace plum::test {

// A library in a folder of its own, whose app "x" runs under a sheet.
class GuardBench
{
public:
    GuardBench();
    ~GuardBench();

    // Puts the script into the library, grants it `json` (nothing: what is computed from it) and runs it.
    void run(const QStringList &lines, const char *json = nullptr);
    void run2(const QStringList &lines, const char *json = nullptr)
    {
        run(QStringList{QStringLiteral("//edition:2")} + lines, json);
    }

    // The same without any limit.
    void runUnlimited(const QStringList &lines);

    QStringList events() const { return bench.events(); }
    bool happened(const QString &event) const { return events().contains(event); }

    // Below the program folder.
    QString path(const QString &name) const { return folder.path() + u'/' + name; }
    void write(const QString &name, const QByteArray &content) const;
    QByteArray content(const QString &name) const;

    QTemporaryDir folder;
    QStringList refused; // the sentences, in order
    QString error; // of a run of edition 2
    recording::ScriptBench bench{[this](const QString &sentence) { refused += sentence; }};
    Sheet granted;
    QString problem; // why no sheet could be computed of what was run last

private:
    void start(const QStringList &lines);

    QString m_before;
};

} // namespace plum::test
