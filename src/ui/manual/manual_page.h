#pragma once

#include <QString>

class QTextDocument;

namespace plum {

struct Theme;

// A page of the manual by the name of its file in docs/, in the language of the session where there is such a
// page. Empty when the manual has no page of that name.
QString manualPage(const QString &fileName);

// Lays a page out: headings, tables and examples in the theme's colours, and anchors at the headings by their
// words, as links name them.
void layOutManual(QTextDocument &document, const QString &markdown, const Theme &theme);

} // namespace plum
