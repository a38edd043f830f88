#include "platform/wayland/mutter/gnome_monitors.h"

#include "platform/wayland/mutter/gnome_bus.h"

#include <QDBusArgument>
#include <QHash>

#include <cmath>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// What is placed on the desktop: one monitor, or several that show the same.
struct Placed
{
    int x = 0;
    int y = 0;
    double scale = 1;
    quint32 transform = 0; // odd ones lie on their sides
    bool isMain = false;
    QString connector;
};

// The size of the mode in which each monitor is, by its connector.
QHash<QString, QSize> readSizes(const QDBusArgument &argument)
{
    QHash<QString, QSize> sizes;
    argument.beginArray();
    while (!argument.atEnd()) {
        QString connector;
        QString skipped;
        argument.beginStructure();
        argument.beginStructure();
        argument >> connector >> skipped >> skipped >> skipped;
        argument.endStructure();
        argument.beginArray();
        while (!argument.atEnd()) {
            int width = 0;
            int height = 0;
            double number = 0;
            QList<double> scales;
            QVariantMap properties;
            argument.beginStructure();
            argument >> skipped >> width >> height >> number >> number >> scales >> properties;
            argument.endStructure();
            if (properties.value(u"is-current"_s).toBool())
                sizes.insert(connector, {width, height});
        }
        argument.endArray();
        QVariantMap properties;
        argument >> properties;
        argument.endStructure();
    }
    argument.endArray();
    return sizes;
}

std::vector<Placed> readPlaced(const QDBusArgument &argument)
{
    std::vector<Placed> all;
    argument.beginArray();
    while (!argument.atEnd()) {
        Placed placed;
        argument.beginStructure();
        argument >> placed.x >> placed.y >> placed.scale >> placed.transform >> placed.isMain;
        argument.beginArray();
        while (!argument.atEnd()) {
            QString connector;
            QString skipped;
            argument.beginStructure();
            argument >> connector >> skipped >> skipped >> skipped;
            argument.endStructure();
            placed.connector = connector;
        }
        argument.endArray();
        QVariantMap properties;
        argument >> properties;
        argument.endStructure();
        all.push_back(placed);
    }
    argument.endArray();
    return all;
}

} // namespace

std::vector<GnomeMonitor> readMonitors(GnomeBus &bus)
{
    const BusObject config{u"org.gnome.Mutter.DisplayConfig"_s, u"/org/gnome/Mutter/DisplayConfig"_s,
        u"org.gnome.Mutter.DisplayConfig"_s};
    const QDBusMessage answer = bus.call(config, u"GetCurrentState"_s);
    if (answer.signature() != "ua((ssss)a(siiddada{sv})a{sv})a(iiduba(ssss)a{sv})a{sv}"_L1)
        return {};
    const QVariantList state = answer.arguments();
    const QHash<QString, QSize> sizes = readSizes(state[1].value<QDBusArgument>());
    const QVariantMap properties = qdbus_cast<QVariantMap>(state[3]);
    // The other manner counts the pixels of the devices, and what programs call one is several of these.
    constexpr uint inUnits = 1;
    const bool isInUnits = properties.value(u"layout-mode"_s).toUInt() == inUnits;

    std::vector<GnomeMonitor> monitors;
    for (const Placed &placed : readPlaced(state[2].value<QDBusArgument>())) {
        QSize size = sizes.value(placed.connector);
        if (placed.transform % 2 != 0)
            size.transpose();
        if (isInUnits) {
            size = {static_cast<int>(std::lround(size.width() / placed.scale)),
                static_cast<int>(std::lround(size.height() / placed.scale))};
        }
        monitors.push_back({{QPoint(placed.x, placed.y), size}, placed.isMain, isInUnits ? 1 : placed.scale});
    }
    return monitors;
}

} // namespace plum
