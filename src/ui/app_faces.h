#pragma once

#include <QHash>
#include <QPixmap>
#include <QString>

namespace plum {

class AppLibrary;
class Paths;

// How apps look in a list: the picture `icon.png` of the app's folder and the text of its guide. Both are
// read when an app is first painted and kept until the library changes.
class AppFaces
{
public:
    AppFaces(const AppLibrary &library, const Paths &paths)
        : m_library(library)
        , m_paths(paths)
    {
    }

    struct Face
    {
        QPixmap icon; // null without a readable picture
        QString summary; // one line; empty without a guide text
    };

    // The icon fits `side` logical pixels at `scale` physical pixels each.
    const Face &face(const QString &keyword, int side, qreal scale);

    void forget() { m_faces.clear(); }

private:
    QPixmap icon(const QString &keyword, int side, qreal scale) const;

    const AppLibrary &m_library;
    const Paths &m_paths;
    QHash<QString, Face> m_faces;
};

} // namespace plum
