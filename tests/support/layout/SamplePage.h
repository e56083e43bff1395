#pragma once

#include <QImage>
#include <QSize>
#include <QStringList>

class LayoutFixture;

// A small page with every kind of layout item: three images (a smooth gradient, a flat
// colour, coarse bars) pasted into the style's places, a fourth hanging over the page's
// right edge, two texts in different fonts and colours, a rectangle, an ellipse, a line, an arrow and a double arrow.
namespace SamplePage {

// The view size that gives the sample page (a scene of 416 x 306).
QSize viewSize();
// Pastes the images and adds the annotations on top; nStyle is chosen first.
void fill(LayoutFixture& fixture, int nStyle);
// The texts of the page's text items.
QStringList texts();
// The sample images, in the order they are pasted.
QImage gradient();
QImage flat();
QImage bars();

} // namespace SamplePage
