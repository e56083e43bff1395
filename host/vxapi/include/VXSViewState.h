#pragma once

// What an image window currently shows and how its content is to be taken.
struct CVXSViewState
{
    // true: take the content as it is drawn on screen (zoom, pan, window/level and all);
    // false: take the dataset's pixels at their full resolution.
    bool m_bGrabDisplayed = false;
    double m_dZoom = 1.0;
    int m_nCurrentFrame = 0;
};
