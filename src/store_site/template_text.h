#pragma once

#include <QHash>
#include <QString>

namespace plum {

// What stands in a template's places: "{{name}}" becomes the text as HTML shows it, "{{{name}}}" becomes the
// text as it is. A place without a value stays as it stands.
using TemplateValues = QHash<QString, QString>;

QString fillTemplate(const QString &text, const TemplateValues &values);

} // namespace plum
