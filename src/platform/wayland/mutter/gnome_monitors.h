#pragma once

#include <QRect>

#include <vector>

namespace plum {

class GnomeBus;

// One screen of the desktop, in the pixels in which GNOME places windows.
struct GnomeMonitor
{
    QRect area;
    bool isMain = false;
    qreal pixelsOfUnit = 1; // of GNOME's, for one of the programs'
};

// Empty without GNOME.
std::vector<GnomeMonitor> readMonitors(GnomeBus &bus);

} // namespace plum
