#pragma once

#include <QIcon>
#include <QPixmap>

// The application's icon, drawn at start-up so no image file has to ship with it:
// a lens over a dark field with a glowing spot, as seen through the imaging camera.
class CVXAppIcon
{
public:
    static QIcon create();

private:
    static QPixmap render(int nSide);
};
