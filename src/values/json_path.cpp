#include "values/json_path.h"

#include "engine/editions/reason.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>

#include <variant>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

using Step = std::variant<QString, qint64>; // a name, or a place in an array

struct Steps
{
    QList<Step> steps;
    QString problem;
};

// The step in brackets that begins at `at`; `at` is then behind it. Nothing for brackets that make no sense.
std::optional<Step> bracketStep(const QString &path, qsizetype &at)
{
    const QChar first = at + 1 < path.size() ? path[at + 1] : QChar();
    if (first == u'"' || first == u'\'') {
        const qsizetype end = path.indexOf(first, at + 2);
        if (end < 0 || end + 1 >= path.size() || path[end + 1] != u']')
            return {};
        const QString name = path.sliced(at + 2, end - at - 2);
        at = end + 2;
        return name;
    }
    const qsizetype end = path.indexOf(u']', at);
    if (end < 0)
        return {};
    bool isNumber = false;
    const qint64 place = QStringView(path).sliced(at + 1, end - at - 1).toLongLong(&isNumber);
    at = end + 1;
    return isNumber ? std::optional<Step>(place) : std::nullopt;
}

Steps stepsOf(const QString &path)
{
    Steps found;
    qsizetype at = 0;
    while (at < path.size()) {
        const qsizetype from = at;
        if (path[at] == u'[') {
            const std::optional<Step> step = bracketStep(path, at);
            if (!step)
                return {{}, Reason::tr("the path makes no sense from \"%1\" on").arg(path.sliced(from))};
            found.steps += *step;
            continue;
        }
        if (path[at] == u'.' && at > 0)
            ++at;
        const qsizetype begin = at;
        while (at < path.size() && path[at] != u'.' && path[at] != u'[')
            ++at;
        if (at == begin)
            return {{}, Reason::tr("the path makes no sense from \"%1\" on").arg(path.sliced(from))};
        found.steps += path.sliced(begin, at - begin);
    }
    return found;
}

QString textOf(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::String:
        return value.toString();
    case QJsonValue::Bool:
        return value.toBool() ? u"true"_s : u"false"_s;
    case QJsonValue::Double: {
        const QVariant number = value.toVariant();
        return number.typeId() == QMetaType::LongLong
            ? QString::number(number.toLongLong())
            : QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    }
    case QJsonValue::Object:
        return QString::fromUtf8(QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact));
    case QJsonValue::Array:
        return QString::fromUtf8(QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact));
    case QJsonValue::Null:
    case QJsonValue::Undefined:
        break;
    }
    return {};
}

// What one step leads to; undefined where there is nothing.
QJsonValue next(const QJsonValue &value, const Step &step)
{
    if (const auto *name = std::get_if<QString>(&step)) {
        if (value.isArray() && *name == "length"_L1)
            return value.toArray().size();
        return value.isObject() ? value.toObject().value(*name) : QJsonValue(QJsonValue::Undefined);
    }
    if (!value.isArray())
        return QJsonValue(QJsonValue::Undefined);
    const QJsonArray array = value.toArray();
    const qint64 place = std::get<qint64>(step);
    const qint64 fromStart = place < 0 ? place + array.size() : place;
    return fromStart >= 0 && fromStart < array.size() ? array[fromStart] : QJsonValue(QJsonValue::Undefined);
}

QString written(const Step &step)
{
    if (const auto *name = std::get_if<QString>(&step))
        return u"\"%1\""_s.arg(*name);
    return Reason::tr("element %1").arg(std::get<qint64>(step));
}

} // namespace

JsonFinding followJsonPath(const QString &json, const QString &path)
{
    const Steps steps = stepsOf(path);
    if (!steps.problem.isEmpty())
        return {{}, steps.problem};

    // The parser takes objects and arrays alone, so the value is put into an array; what follows it is an
    // error.
    QJsonParseError error;
    const QJsonArray wrapped = QJsonDocument::fromJson('[' + json.toUtf8() + ']', &error).array();
    if (error.error != QJsonParseError::NoError || wrapped.size() != 1)
        return {{}, Reason::tr("the text is not JSON")};

    QJsonValue value = wrapped[0];
    for (const Step &step : steps.steps) {
        value = next(value, step);
        if (value.isUndefined())
            return {{}, Reason::tr("there is no %1 (path %2)").arg(written(step), path)};
    }
    return {textOf(value), {}};
}

} // namespace plum
