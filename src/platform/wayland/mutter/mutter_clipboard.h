#pragma once

#include "platform/clipboard.h"

namespace plum {

class DesktopExtension;

// The clipboard through Plum's extension. The compositor keeps what is put on it, and so it stays when this
// process ends.
class MutterClipboard final : public Clipboard
{
    Q_OBJECT

public:
    explicit MutterClipboard(DesktopExtension &extension);

    QString text() override;
    void setText(const QString &text) override;
    void clear() override;
    std::optional<quint64> timesTaken() const override { return {}; }
    void outliveProcess() override { }

private:
    DesktopExtension &m_extension;
};

} // namespace plum
