#include "launcher_link.h"
#include "look/translations.h"
#include "store_form.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QJsonArray>

#include <functional>
#include <map>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

void obey(const WindowMessage &command, StoreForm &form)
{
    namespace verbs = windowMessages;
    const QJsonObject &fields = command.fields;
    const auto pixels = [&] { return fields.value("pixels"_L1).toInt(); };
    const std::pair<QLatin1StringView, std::function<void()>> actions[] = {
        {verbs::show, [&] { form.bringUp(); }},
        {verbs::hide, [&] { form.hide(); }},
        {verbs::navigate, [&] { form.showAddress(QUrl(fields.value("address"_L1).toString())); }},
        {verbs::write, [&] { form.writePage(fields.value("html"_L1).toString()); }},
        {verbs::clear, [&] { form.clearPage(); }},
        {verbs::caption,
            [&] {
                form.setCaption(fields.value("text"_L1).toString(), fields.value("meaning"_L1).toString());
                if (fields.value("begins"_L1).toBool())
                    form.forgetProgress();
            }},
        {verbs::progress, [&] { form.setProgress(fields); }},
        {verbs::browserWidth, [&] { form.setBrowserWidth(pixels()); }},
        {verbs::browserHeight, [&] { form.setBrowserHeight(pixels()); }},
        {verbs::height, [&] { form.setWindowHeight(pixels()); }},
        {verbs::layOut, [&] { form.Command1_Click(); }},
        {verbs::apps, [&] { form.setApps(fields.value("apps"_L1).toArray()); }},
        {verbs::failed, [&] { form.setFailed(fields.value("keyword"_L1).toString()); }},
        {verbs::loading, [&] { form.setLoadingVisible(fields.value("visible"_L1).toBool()); }},
    };
    for (const auto &[verb, action] : actions) {
        if (verb == command.verb)
            action();
    }
}

void report(QLatin1StringView verb, const QUrl &address)
{
    LauncherLink::tell(verb, {{u"address"_s, address.toString(QUrl::FullyEncoded)}});
}

} // namespace

// The store window. Plum starts it and tells it what to show; it ends when Plum does.
int main(int argc, char **argv)
{
    QApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"plum"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    installTranslation(application);

    const QCommandLineOption downloadBase(u"download-base"_s, {}, u"address"_s);
    QCommandLineParser parser;
    const QCommandLineOption isUnsigned(u"unsigned"_s);
    parser.addOptions({downloadBase, isUnsigned});
    parser.process(application);

    const std::unique_ptr<StoreForm> made = makeStoreForm(QUrl(parser.value(downloadBase)));
    StoreForm &form = *made;
    if (parser.isSet(isUnsigned))
        form.tellUnsigned();
    LauncherLink link;
    QObject::connect(&link, &LauncherLink::commandArrived, &form,
        [&form](const WindowMessage &command) { obey(command, form); });
    // quit() would ask the window, which never agrees to be closed.
    QObject::connect(&link, &LauncherLink::ended, &application, [] { QApplication::exit(); });

    namespace verbs = windowMessages;
    QObject::connect(&form, &StoreForm::closeRequested, [] { LauncherLink::tell(verbs::close); });
    QObject::connect(&form, &StoreForm::completed, [] { LauncherLink::tell(verbs::complete); });
    QObject::connect(&form, &StoreForm::anewRequested, [](const QString &keyword) {
        LauncherLink::tell(verbs::anew, {{u"keyword"_s, keyword}});
    });
    QObject::connect(&form, &StoreForm::retryRequested, [] { LauncherLink::tell(verbs::retry); });
    QObject::connect(
        &form, &StoreForm::packageFollowed, [](const QUrl &address) { report(verbs::package, address); });
    QObject::connect(
        &form, &StoreForm::outsideOpened, [](const QUrl &address) { report(verbs::open, address); });
    return QApplication::exec();
}
