#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace plum::kit {

// An option of a command that takes one file. What an option does with its value returns why the value is
// unusable, as a sentence; nothing when it is usable.
struct OptionRow
{
    QString name; // with its dashes
    bool hasValue = true;
    std::function<QString(const QString &value)> take;
};

struct FileAndHelp
{
    QString file;
    bool wantsHelp = false; // of --help, which every command has
};

// Options may stand on both sides of the file. Where the arguments are unusable, `problem` says why in a
// sentence.
FileAndHelp readOptions(const QStringList &arguments, const std::vector<OptionRow> &rows, QString &problem);

// Says on standard error what is wrong with the arguments of a command, and its help. Returns the exit
// status.
int refuse(const QString &problem, const char *help);

} // namespace plum::kit
