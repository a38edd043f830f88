#include "check/edition1/references.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace plum::edition1 {

using namespace Qt::StringLiterals;

namespace {

const QHash<QString, QStringList> &namesByPrefix()
{
    static const QHash<QString, QStringList> names{
        {u"os"_s,
            {u"get_clipboard"_s, u"path_pfold"_s, u"path_ppfold"_s, u"path_package"_s, u"path_package_name"_s,
                u"path_desktop"_s}},
        {u"set"_s, {}},
        {u"str"_s, {u"r"_s}},
        {u"me"_s, {u"text_input"_s, u"drag"_s, u"drag_text"_s, u"enter_input"_s}},
        {u"mouse"_s, {u"xy"_s}},
    };
    return names;
}

// A piece of what was typed, counted from 1.
bool isNumberedPiece(const QString &name)
{
    static const QRegularExpression pattern(u"\\Aenter_input.*_[1-9][0-9]*\\z"_s);
    return pattern.match(name).hasMatch();
}

} // namespace

const QStringList &referencePrefixes()
{
    static const QStringList prefixes = namesByPrefix().keys();
    return prefixes;
}

QStringList referenceNames(const QString &prefix)
{
    return namesByPrefix().value(prefix);
}

bool isReferenceName(const QString &name)
{
    return isNumberedPiece(name) || std::ranges::any_of(namesByPrefix(), [&name](const QStringList &names) {
        return names.contains(name);
    });
}

bool isReference(const Value &value)
{
    const auto names = namesByPrefix().constFind(value.prefix);
    return names != namesByPrefix().constEnd()
        && (names->contains(value.name) || (value.prefix == "me"_L1 && isNumberedPiece(value.name)));
}

} // namespace plum::edition1
