#pragma once

#include <QIcon>

// The application's icon: every size rendered at build time from desktop/vxhost.svg, the
// same files the installed icon theme gets, up to twice the largest theme size so that the
// icon stays sharp on screens of double pixel density.
class CVXAppIcon
{
public:
    static QIcon create();
};
