#pragma once

#include <QHash>
#include <QObject>
#include <QPixmap>
#include <QString>
#include <QStringList>
#include <QTimer>

namespace plum {

class AppLibrary;
class Paths;

// How apps look in a list: the picture `icon.png` of the app's folder and the text of its guide. Both are
// read soon after an app was first painted, not while it is, and kept until the library changes.
class AppFaces final : public QObject
{
    Q_OBJECT

public:
    AppFaces(const AppLibrary &library, const Paths &paths);

    struct Face
    {
        QPixmap icon = {}; // null without a readable picture
        QString summary = {}; // one line; empty without a guide text
    };

    // What is known of the app by now. The icon fits `side` logical pixels at `scale` physical pixels each.
    Face face(const QString &keyword, int side, qreal scale);

    // The library has changed: what is known is read again when it is next painted.
    void forget();

Q_SIGNALS:
    void changed(); // a face that was asked for is known now

private:
    struct Known
    {
        Face face = {};
        int side = 0;
        qreal scale = 0; // of what was read; 0 before
        qreal wanted = 0;
    };

    void readWanted();
    QPixmap icon(const QString &keyword, int side, qreal scale) const;

    const AppLibrary &m_library;
    const Paths &m_paths;
    QHash<QString, Known> m_faces;
    QStringList m_wanted;
    QTimer m_reading;
};

} // namespace plum
