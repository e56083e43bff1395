#pragma once

#include "figure/VXSItemStyle.h"

#include <optional>

class QGraphicsItem;

// The look new shapes (rectangles, ellipses, lines and arrows) get when drawn, kept in the
// host's settings. Until the user makes one the default ("Use as Default"), shapes come out
// in the layout window's standard look; "Reset Defaults" brings that back for every kind.
class CVXSStyleDefaults
{
public:
    // Whether the kind is one that is drawn, and so has a default.
    static bool hasDefault(int nType);
    // The stored default of the kind, if the user made one.
    static std::optional<CVXSItemStyle> stored(int nType);
    // Makes the item's look the default of its kind.
    static void store(const QGraphicsItem& item);
    static void resetAll();
    // Gives a newly drawn item the stored default of its kind, if there is one.
    static void applyStored(QGraphicsItem& item);
};
