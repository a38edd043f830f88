#pragma once

#include "ui/frm_set_fixture.h"

namespace plum {

// The launcher with an app that is open in the editor.
class EditorTest : public FrmSetTest
{
protected:
    void edit(const QByteArray &script)
    {
        folder.addApp(QStringLiteral("app"), script);
        recording::writeBytes(folder.configTxt(), "app\r\n");
        start();
        Q_EMIT ui.window()->editRequested(QStringLiteral("app"));
    }

    bool isEditing() { return find("addeditbox")->isVisible(); }
    QByteArray saved() { return recording::bytesOf(folder.apps(QStringLiteral("app/main.wf"))); }
};

} // namespace plum
