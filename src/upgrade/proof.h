#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace plum::upgrade {

// Something that differs, or that keeps both from being compared.
struct Difference
{
    std::optional<int> line; // of the script of edition 2, from 1; none where it cannot be told
    QString reason;
};

// Runs both scripts on the recording backend, with the same desktop, files, server and answers, and compares
// what they do there: every event in its order but the pauses before lines, and every file. `folder` is the
// script's own; copies of its files are there for both. Nothing when they do the same.
std::optional<Difference> differenceBetween(
    const QStringList &edition1, const QStringList &edition2, const QString &folder);

} // namespace plum::upgrade
