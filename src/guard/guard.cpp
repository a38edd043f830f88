#include "guard/guard.h"

#include "engine/editions/reason.h"
#include "engine/editions/run_observer.h"
#include "engine/launcher.h"
#include "engine/text_functions.h"
#include "platform/desktop_windows.h"
#include "platform/paths.h"
#include "platform/platform.h"
#include "platform/pointer.h"
#include "sheet/given_text.h"
#include "sheet/objects.h"
#include "sheet/sheet_sentences.h"

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr quint8 controlKey = 17;
constexpr quint8 pasteKey = 86;

QString withSlashes(QString path)
{
    return path.replace(u'\\', u'/');
}

} // namespace

Guard::Guard(Needs needs)
    : m(std::move(needs))
    , m_places(m.platform)
{
}

const GrantedLimit *Guard::limit() const
{
    return static_cast<const GrantedLimit *>(m.state.limit.get());
}

const Scope *Guard::scopeOf(Effect effect) const
{
    return limit()->sheet.find(effect);
}

bool Guard::refuse(Effect effect, const QString &what)
{
    m.state.refused = Reason::tr("not allowed for %1: %2").arg(limit()->keyword, deedText(effect, what));
    if (m.state.observer)
        m.state.observer->refused(m.state.refused);
    // A repetition would say it a thousand times in one run.
    if (m_reportedFor != m.state.limit || m_lastReport != m.state.refused)
        m.report(m.state.refused);
    m_reportedFor = m.state.limit;
    m_lastReport = m.state.refused;
    return false;
}

bool Guard::allows(Effect effect)
{
    return !limit() || scopeOf(effect) || refuse(effect);
}

bool Guard::allowsAnyOf(Effect first, Effect second)
{
    return !limit() || scopeOf(first) || scopeOf(second) || refuse(first);
}

// What the user has typed, dropped or answered.
QStringList Guard::given() const
{
    QStringList texts = partsOfTyped(AfterFirstBlank(m.launcher.keywordBoxText())) + m.state.answers;
    texts += m.state.droppedPath;
    texts.removeAll(QString());
    return texts;
}

bool Guard::isGiven(const QString &text) const
{
    const QStringList texts = given();
    return std::ranges::any_of(
        texts, [wanted = withSlashes(text)](const QString &each) { return withSlashes(each) == wanted; });
}

// The file itself: neither a folder above it nor one whose name begins like it.
bool Guard::isGivenFile(const QString &systemPath) const
{
    const QStringList texts = given();
    const Paths &paths = m.platform.paths();
    return std::ranges::any_of(texts, [&](QString each) {
        return m_places.isSameFile(systemPath, paths.toSystem(each.replace(u'/', u'\\')));
    });
}

// The server of an address that is one as a whole.
bool Guard::isGivenAddress(const QString &address) const
{
    if (isGiven(address))
        return true;
    const std::optional<QString> host = hostObject(address);
    const QStringList texts = given();
    return host
        && std::ranges::any_of(texts, [&host](const QString &each) { return hostObject(each) == host; });
}

bool Guard::isInItsWindow(Effect effect)
{
    const QString &title = limit()->sheet.window();
    if (title.isEmpty())
        return true;
    Windows &windows = m.platform.windows();
    const WindowHandle window = windows.byTitle(title);
    const bool isThere = window != 0 && windows.foreground() == window
        && (effect != Effect::Mouse || windows.rectangle(window).contains(m.platform.pointer().position()));
    return isThere || refuse(effect);
}

bool Guard::allowsInput(Effect effect)
{
    return !limit() || (allows(effect) && isInItsWindow(effect));
}

bool Guard::allowsKey(quint8 virtualKey)
{
    if (!limit())
        return true;
    const bool pastes = (virtualKey == controlKey || virtualKey == pasteKey) && scopeOf(Effect::Paste);
    return (pastes || allows(Effect::Keys)) && isInItsWindow(Effect::Keys);
}

bool Guard::allowsFile(Effect effect, const QString &systemPath)
{
    if (!limit())
        return true;
    const Scope *scope = scopeOf(effect);
    return allowsPlace(effect, systemPath, scope && scope->given && isGivenFile(systemPath));
}

bool Guard::allowsNewFile(const QString &folder, const QString &name)
{
    if (!limit())
        return true;
    const Paths &paths = m.platform.paths();
    const QString file = paths.toSystem(folder + u'\\' + name);
    const Scope *scope = scopeOf(Effect::WriteFile);
    // Without a name the helper takes one that stays in the folder.
    const bool isGivenFolder = scope && scope->given && isGivenFile(paths.toSystem(folder))
        && (name.isEmpty() || m_places.isDirectlyIn(file, paths.toSystem(folder)));
    return allowsPlace(Effect::WriteFile, file, isGivenFolder);
}

bool Guard::allowsPlace(Effect effect, const QString &systemPath, bool isGiven)
{
    const Scope *scope = scopeOf(effect);
    const bool isAllowed = scope && m_places.allows(effect, *scope, limit()->keyword, systemPath, isGiven);
    return isAllowed || refuse(effect, systemPath);
}

bool Guard::allowsAddress(const QString &address)
{
    if (!limit())
        return true;
    const Scope *scope = scopeOf(Effect::Contact);
    const std::optional<QString> host = hostObject(address);
    const bool isAllowed = scope
        && (scope->anything || (scope->given && isGivenAddress(address))
            || (host && scope->objects.contains(*host)));
    return isAllowed || refuse(Effect::Contact, address);
}

bool Guard::allowsPage(const QString &html)
{
    if (!limit() || !html.contains(u'<'))
        return true;
    const Scope *scope = scopeOf(Effect::Contact);
    return (scope && scope->anything) || refuse(Effect::Contact, Reason::tr("whoever a page leads to"));
}

bool Guard::mayOpen(const Scope &scope, const QString &target)
{
    if (scope.anything || (scope.given && isGiven(target)))
        return true;
    const QString name = u"name:"_s + withSlashes(target);
    const QString path = m.platform.paths().toSystem(target);
    return std::ranges::any_of(scope.objects, [&](const QString &object) {
        return object.startsWith("name:"_L1) ? object == name
                                             : m_places.isSame(object, limit()->keyword, path);
    });
}

bool Guard::allowsRun(const QString &target)
{
    if (!limit())
        return true;
    const Scope *scope = scopeOf(Effect::Run);
    if (scope && mayOpen(*scope, target))
        return true;
    const QString address = withSlashes(target);
    return isWebAddress(address) ? allowsAddress(address) : refuse(Effect::Run, target);
}

bool Guard::allowsTitle(const QString &title)
{
    if (!limit() || scopeOf(Effect::SeeWindows))
        return true;
    const Scope *scope = scopeOf(Effect::ChangeWindows);
    const bool isAllowed
        = scope && (scope->anything || scope->objects.contains(title) || (scope->given && isGiven(title)));
    return isAllowed || refuse(Effect::SeeWindows);
}

bool Guard::allowsWindow(qint32 window)
{
    if (!limit())
        return true;
    const Scope *scope = scopeOf(Effect::ChangeWindows);
    if (!scope)
        return refuse(Effect::ChangeWindows);
    Windows &windows = m.platform.windows();
    const auto isMeant = [&](const QString &title) { return windows.byTitle(title) == window; };
    const bool isAllowed = scope->anything || window == 0 || std::ranges::any_of(scope->objects, isMeant)
        || (scope->given
            && (isMeant(AfterFirstBlank(m.launcher.keywordBoxText()))
                || std::ranges::any_of(m.state.answers, isMeant)));
    return isAllowed || refuse(Effect::ChangeWindows);
}

bool Guard::allowsClipboardText()
{
    return allowsAnyOf(Effect::SeeClipboard, Effect::Paste);
}

bool Guard::allowsClearingClipboard()
{
    return allowsAnyOf(Effect::SetClipboard, Effect::Paste);
}

bool Guard::allowsSettingClipboard(const QString &text)
{
    if (!limit() || scopeOf(Effect::SetClipboard))
        return true;
    const Scope *paste = scopeOf(Effect::Paste);
    const bool isAllowed = paste
        && (paste->anything || text.isEmpty() || text == m_clipboardBefore
            || (paste->given && isGiven(text)));
    return isAllowed || refuse(paste ? Effect::Paste : Effect::SetClipboard);
}

} // namespace plum
