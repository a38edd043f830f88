#pragma once

#include "check/findings/report.h"

namespace plum {

// The files in an app's folder, held against what its script names.
class AppFiles
{
public:
    // `folder` is the script's own, as the system writes it; empty when it is not known.
    explicit AppFiles(const QString &folder = {})
        : m_folder(folder)
    {
    }

    struct Use
    {
        bool isPicture = false; // that is searched for on the screen
        QString region = {}; // x:y:width:height, where the line says in which; else empty
    };

    // Judges a path as written in the script, when it lies in the app's folder: whether the file is there,
    // and for a picture that is searched for, what the search will compare.
    void judge(Report &report, int line, int column, const QString &written, const Use &use) const;

    // Whether a file is as a line has found it.
    static bool isStill(const LineTranscript::AskedFile &asked);

    // The system's path of what a script means by `written`; empty when it does not lie in the app's folder.
    QString resolved(const QString &written) const;

private:
    QString m_folder;
};

} // namespace plum
