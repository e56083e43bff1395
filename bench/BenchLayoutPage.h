#pragma once

#include <VXSLayoutManager.h>

#include <QImage>
#include <QRect>
#include <QString>

#include <vector>

class CVXSLayoutItemImage;

// "Layout 4x4" on a 1000 x 800 page filled with the sources, as the window holds them once
// pasted, exported as the window exports.
class CBenchLayoutPage
{
public:
    static constexpr double ExportScale = 4.0;

    explicit CBenchLayoutPage(const std::vector<QImage>& sources);

    // The device rectangle the page gives the image of the cell, as the renderer draws it.
    QRect cellTarget(int nCell) const;
    // Replaces every source by a pixel-picked reduction to its cell, which the renderer
    // then draws as it stands.
    void pickPixels();
    // The page as exports render it.
    QImage render();
    // Renders the page and writes it as PNG; returns the seconds taken.
    // By value: the host's image writer takes the name by reference.
    double exportPng(QString strPath, QImage* pPage);
    double lastRenderSeconds() const;

private:
    CVXSLayoutManager m_manager;
    std::vector<CVXSLayoutItemImage*> m_images; // owned by the manager's scene
    double m_dRenderSeconds = 0;
};
