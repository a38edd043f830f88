#include "store/store_process.h"

#include "store/download_texts.h"
#include "store/protocol/window_messages.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QJsonArray>

namespace plum {

using namespace Qt::StringLiterals;

StoreProcess::StoreProcess(Options options)
    : m_options(std::move(options))
{
    m_process.setProgram(m_options.program);
    QStringList arguments{u"--download-base"_s, m_options.downloadBase.toString(QUrl::FullyEncoded)};
    if (!m_options.isSigned)
        arguments += u"--unsigned"_s;
    m_process.setArguments(arguments);
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &StoreProcess::readLines);
    connect(&m_process, &QProcess::finished, this, &StoreProcess::processEnded);

    m_hidden.setSingleShot(true);
    m_hidden.setInterval(m_options.keptHidden);
    connect(&m_hidden, &QTimer::timeout, this, &StoreProcess::end);
}

StoreProcess::~StoreProcess()
{
    m_process.disconnect(this);
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.closeWriteChannel();
    constexpr int patience = 2000; // ms
    if (!m_process.waitForFinished(patience)) {
        m_process.kill();
        m_process.waitForFinished(patience);
    }
}

QString StoreProcess::besideThisProgram()
{
    QString name = u"plum-store-window"_s;
    const QString ending = QFileInfo(QCoreApplication::applicationFilePath()).suffix();
    if (!ending.isEmpty())
        name += u'.' + ending;
    return QCoreApplication::applicationDirPath() + u'/' + name;
}

bool StoreProcess::isAvailable() const
{
    return QFileInfo(m_options.program).isExecutable();
}

bool StoreProcess::isListening() const
{
    return m_process.state() != QProcess::NotRunning && !m_ending;
}

void StoreProcess::send(QLatin1StringView verb, const QJsonObject &fields)
{
    if (isListening()) {
        m_process.write(toLine(verb, fields));
        return;
    }
    std::erase_if(m_kept, [&](const auto &kept) { return kept.first == verb; });
    m_kept.emplace_back(verb, fields);
}

void StoreProcess::startIfNeeded()
{
    if (isListening() || !isAvailable())
        return;
    m_wanted = m_ending;
    if (m_wanted)
        return;
    m_process.start();
    for (const auto &[verb, fields] : std::exchange(m_kept, {}))
        send(verb, fields);
}

void StoreProcess::showWindow()
{
    if (!isAvailable())
        return;
    m_shown = true;
    m_hidden.stop();
    startIfNeeded();
    send(windowMessages::show);
}

void StoreProcess::hideWindow()
{
    m_shown = false;
    m_wanted = false;
    if (!isListening())
        return;
    send(windowMessages::hide);
    m_hidden.start();
}

void StoreProcess::showPage(QLatin1StringView verb, const QJsonObject &fields)
{
    if (!isAvailable())
        return;
    clearPage();
    startIfNeeded();
    send(verb, fields);
    if (!m_shown)
        m_hidden.start();
}

void StoreProcess::navigate(const QUrl &address)
{
    showPage(windowMessages::navigate, {{u"address"_s, address.toString(QUrl::FullyEncoded)}});
}

void StoreProcess::writePage(const QString &html)
{
    showPage(windowMessages::write, {{u"html"_s, html}});
}

void StoreProcess::clearPage()
{
    if (isListening()) {
        send(windowMessages::clear);
        return;
    }
    // A process that does not run has no page: what it should have shown is all there is to forget.
    std::erase_if(m_kept, [](const auto &kept) {
        return kept.first == windowMessages::navigate || kept.first == windowMessages::write;
    });
}

void StoreProcess::setCaption(const QString &text)
{
    QJsonObject fields{{u"text"_s, text}};
    if (const QString meaning = meaningOf(text); !meaning.isEmpty())
        fields.insert(u"meaning"_s, meaning);
    if (text == downloadTitle(DownloadStatus::Sending))
        fields.insert(u"begins"_s, true);
    send(windowMessages::caption, fields);
}

void StoreProcess::setWindowHeight(int pixels)
{
    send(windowMessages::height, {{u"pixels"_s, pixels}});
}

void StoreProcess::setBrowserWidth(int pixels)
{
    send(windowMessages::browserWidth, {{u"pixels"_s, pixels}});
}

void StoreProcess::setBrowserHeight(int pixels)
{
    send(windowMessages::browserHeight, {{u"pixels"_s, pixels}});
}

void StoreProcess::layOut()
{
    send(windowMessages::layOut);
}

void StoreProcess::setLoadingVisible(bool visible)
{
    send(windowMessages::loading, {{u"visible"_s, visible}});
}

void StoreProcess::setProgress(const DownloadProgress &progress)
{
    // A window that comes later is told what happens then, not how far it had got before.
    if (!isListening())
        return;
    send(windowMessages::progress,
        {{u"percent"_s, progress.percent}, {u"total"_s, progress.total}, {u"done"_s, progress.done},
            {u"speed"_s, progress.speed}});
}

void StoreProcess::setApps(const std::vector<StoreApp> &apps)
{
    QJsonArray rows;
    for (const StoreApp &app : apps)
        rows.append(
            QJsonObject{{u"keyword"_s, app.keyword}, {u"version"_s, app.version}, {u"newest"_s, app.newest}});
    send(windowMessages::apps, {{u"apps"_s, rows}});
}

void StoreProcess::setFailed(const QString &keyword)
{
    send(windowMessages::failed, {{u"keyword"_s, keyword}});
}

void StoreProcess::readLines()
{
    while (m_process.canReadLine()) {
        if (const std::optional<WindowMessage> message = fromLine(m_process.readLine()))
            handle(*message);
    }
}

void StoreProcess::handle(const WindowMessage &message)
{
    const QUrl address(message.fields.value("address"_L1).toString(), QUrl::StrictMode);
    if (message.verb == windowMessages::package)
        Q_EMIT packageFollowed(address);
    else if (message.verb == windowMessages::open)
        Q_EMIT outsideOpened(address);
    else if (message.verb == windowMessages::complete)
        Q_EMIT pageCompleted();
    else if (message.verb == windowMessages::anew)
        Q_EMIT anewRequested(message.fields.value("keyword"_L1).toString());
    else if (message.verb == windowMessages::retry)
        Q_EMIT retryRequested();
    else if (message.verb == windowMessages::close)
        Q_EMIT closeRequested();
}

void StoreProcess::processEnded()
{
    m_hidden.stop();
    m_ending = false;
    if (std::exchange(m_wanted, false)) {
        startIfNeeded();
        return;
    }
    // A window that is gone although nobody closed it counts as closed.
    if (std::exchange(m_shown, false))
        Q_EMIT closeRequested();
}

void StoreProcess::end()
{
    send(windowMessages::end);
    m_process.closeWriteChannel();
    m_ending = true;
    constexpr auto patience = std::chrono::seconds(5);
    QTimer::singleShot(patience, &m_process, [this, number = m_process.processId()] {
        if (m_process.processId() == number)
            m_process.kill();
    });
}

} // namespace plum
