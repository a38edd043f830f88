#pragma once

#include "helpers/browser/browser_request.h"

#include <QMainWindow>
#include <QWebEngineProfile>

class QWebEngineView;

namespace plum {

// Shows one page. Nothing of it outlives the window: no cookies, no cache, no history, no downloads. A page
// from the web cannot read the files of this computer.
class BrowserWindow final : public QMainWindow
{
    Q_OBJECT

public:
    explicit BrowserWindow(const BrowserRequest &request);
    ~BrowserWindow() override;

private:
    void confine();

    QWebEngineProfile m_profile; // without a name it stays in memory
    QWebEngineView *m_view;
};

} // namespace plum
