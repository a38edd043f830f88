#pragma once

class QWidget;

namespace plum {

// Gives an entry's placeholder the theme's quiet colour. A style sheet would paint it with half of the text's
// strength, which is too pale to be read.
void keepPlaceholderReadable(QWidget &entry);

} // namespace plum
