#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

namespace plum {

struct PublishedApp;

// What can be said about an app's scripts before anybody runs them.
class AppReview
{
public:
    AppReview();
    ~AppReview();
    Q_DISABLE_COPY_MOVE(AppReview)

    // Looks at all scripts in `folder` and notes in the app what is to be published of that. Returns what was
    // found in them, a line each; `hasError` is set when an app with that must not be published.
    QString review(const QString &folder, PublishedApp &app, bool &hasError) const;

private:
    struct Parts;
    std::unique_ptr<Parts> m;
};

} // namespace plum
