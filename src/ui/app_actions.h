#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace plum {

class AppFaces;
class AppLibrary;
class MessageBoxes;
class Shell;
class frmSet;

// What the menus and panels of the launcher do with apps: write, edit, rename, delete and explain them.
class AppActions final : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        frmSet &window;
        AppLibrary &library;
        AppFaces &faces;
        Shell &shell;
        MessageBoxes &messages;
        std::function<void(const QString &path)> setScriptPath; // of the script that is being looked at
    };

    explicit AppActions(Parts parts);

    void addApp();
    void editApp(const QString &keyword);
    void editDotScript(const QString &keyword);
    void renameApp(const QString &keyword);
    void deleteApp(const QString &keyword);
    void showGuide(const QString &keyword);

private:
    void saveEdited();
    void confirmRename();
    void appendDropped(const QStringList &paths);

    Parts m;
};

} // namespace plum
