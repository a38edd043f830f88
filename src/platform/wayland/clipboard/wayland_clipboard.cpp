#include "platform/wayland/clipboard/wayland_clipboard.h"

#include "platform/linux/clipboard_keeper.h"
#include "platform/wayland/clipboard/text_sender.h"
#include "platform/wayland/clipboard/text_types.h"
#include "platform/wayland/connection/wayland_connection.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int readTime = 1000; // milliseconds

} // namespace

WaylandClipboard::WaylandClipboard(WaylandConnection &connection)
    : m_connection(connection)
{
    if (!m_connection.isOpen() || !m_connection.dataControl())
        return;
    static const zwlr_data_control_device_v1_listener listener = [] {
        zwlr_data_control_device_v1_listener made{};
        made.data_offer = [](void *self, zwlr_data_control_device_v1 *, zwlr_data_control_offer_v1 *offer) {
            static_cast<WaylandClipboard *>(self)->m_arriving = std::make_unique<OfferedText>(offer);
        };
        made.selection = [](void *self, zwlr_data_control_device_v1 *, zwlr_data_control_offer_v1 *offer) {
            auto &clipboard = *static_cast<WaylandClipboard *>(self);
            clipboard.take(offer ? std::move(clipboard.m_arriving) : nullptr);
        };
        made.finished = [](void *, zwlr_data_control_device_v1 *) {};
        return made;
    }();
    m_device.reset(
        zwlr_data_control_manager_v1_get_data_device(m_connection.dataControl(), m_connection.seat()));
    zwlr_data_control_device_v1_add_listener(m_device.get(), &listener, this);
    // What is there already is no change.
    const QSignalBlocker blocker(this);
    m_connection.roundTrip();
}

void WaylandClipboard::take(std::unique_ptr<OfferedText> offer)
{
    m_offer = std::move(offer);
    // Whoever hears of it may ask the compositor again, which must not happen while its events are handed
    // out.
    if (!signalsBlocked())
        QMetaObject::invokeMethod(this, &WaylandClipboard::changed, Qt::QueuedConnection);
}

QString WaylandClipboard::text()
{
    m_connection.roundTrip();
    if (m_source)
        return QString::fromUtf8(m_text);
    return m_offer ? m_offer->read(m_connection, readTime) : QString();
}

void WaylandClipboard::setText(const QString &text)
{
    if (!m_device)
        return;
    static constexpr zwlr_data_control_source_v1_listener listener{
        .send =
            [](void *self, zwlr_data_control_source_v1 *, const char *, int32_t descriptor) {
                auto &clipboard = *static_cast<WaylandClipboard *>(self);
                new TextSender(descriptor, clipboard.m_text, &clipboard.m_senders);
                ++clipboard.m_timesTaken;
            },
        .cancelled
        = [](void *self,
              zwlr_data_control_source_v1 *source) { static_cast<WaylandClipboard *>(self)->lose(source); },
    };
    WaylandOwned<zwlr_data_control_source_v1> source(
        zwlr_data_control_manager_v1_create_data_source(m_connection.dataControl()));
    zwlr_data_control_source_v1_add_listener(source.get(), &listener, this);
    for (const char *type : textTypes)
        zwlr_data_control_source_v1_offer(source.get(), type);
    zwlr_data_control_device_v1_set_selection(m_device.get(), source.get());
    m_source = std::move(source);
    m_text = text.toUtf8();
    m_connection.roundTrip();
}

void WaylandClipboard::lose(zwlr_data_control_source_v1 *source)
{
    if (m_source.get() != source)
        return;
    m_source.reset();
    m_text.clear();
}

void WaylandClipboard::clear()
{
    if (!m_device)
        return;
    zwlr_data_control_device_v1_set_selection(m_device.get(), nullptr);
    m_source.reset();
    m_text.clear();
    m_connection.roundTrip();
}

void WaylandClipboard::outliveProcess()
{
    m_connection.roundTrip();
    if (m_source && !m_text.isEmpty())
        keepClipboardText(u"plum-wayland-clipboard"_s, m_text);
}

} // namespace plum
