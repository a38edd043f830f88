#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <utility>

namespace plum::kit {

// How `plumkit run` ends.
enum Status {
    Done = 0,
    Failed = 1, // every error of the script, also one that was found before the run
    Unusable = 2, // options, or a file that cannot be read
    TimedOut = 124,
    Stopped = 130, // by Ctrl+C, or because a question was not answered
};

struct RunOptions
{
    QString file;
    std::optional<double> timeout; // seconds
    QList<std::pair<QString, QString>> variables;
    QString trace; // the file that gets what the run did; empty for none
    bool isScoped = false; // keys and clicks go to the run's own window alone
    bool takesPictures = false; // for what is kept of the run
    bool tracesSecrets = false; // answers and the clipboard's texts, too
    bool wantsHelp = false;
};

struct DryOptions
{
    QString file;
    QList<std::pair<QString, QString>> variables;
    QStringList answers; // to its questions, one after the other
    QString typed; // behind the keyword
    QString record; // the page of a run that this one is laid beside; empty for none
    bool allowsNetwork = false; // servers are asked
    int mostEvents = 100'000;
    bool wantsHelp = false;
};

// The same for `plumkit dry`.
DryOptions readDryOptions(const QStringList &arguments, QString &problem);

// The arguments behind `plumkit run`; options may stand on both sides of the file. Where they are unusable,
// `problem` says why in a sentence.
RunOptions readRunOptions(const QStringList &arguments, QString &problem);

} // namespace plum::kit
