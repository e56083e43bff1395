#pragma once

#include <QtGlobal>

// Numbers and names shared by the plugin, the layout manager, the view and the window.
namespace VXSLayout {

// The tool's name. As it stands it is the object name of the tool's menu entry and of its
// window, by which the host and the window find them; translated in ToolNameContext it is
// the entry's text and the window's title.
constexpr char ToolNameContext[] = "VXSLayout";
constexpr char ToolName[] = QT_TRANSLATE_NOOP("VXSLayout", "Image Layout Window");

// Item type ids answered by type(); fixed numbers that other code compares against.
constexpr int ImageItemType = 32784;
constexpr int TextItemType = 32800;
constexpr int EllipseItemType = 32817;
constexpr int RectangleItemType = 32818;
constexpr int ArrowItemType = 32820;
constexpr int GridItemType = 32822;

// The view keeps four handles, sixteen cell frames and one cell highlight in the scene
// at all times; a scene with no more items than this holds no user content.
constexpr int HandleCount = 4;
constexpr int MaxCellCount = 16;
constexpr int AuxiliaryItemCount = HandleCount + MaxCellCount + 1;

// Z bands: cell frames 0..15, layout items above BaseZ, the highlight and the handles on top.
constexpr int BaseZ = 25;
constexpr int HighlightZ = 999;
constexpr int HandleZ = 1000;

// Largest distance from the origin of any coordinate, width or height of an item, in a layout
// file and however far a page is stretched to fit the view: ints and the painter hold these.
constexpr double MaxCoordinate = 1000000.0;

constexpr int HandleSize = 8;
// Margin around an arrow's end points that its rectangle keeps, so repaints and picking
// cover the heads.
constexpr int ArrowMargin = 40;

constexpr double ArrowHeadLength = 10.0;
constexpr double ArrowHeadWidthRatio = 0.75;

// Arrow tool kinds as the window reports them; NoArrowTool while the tool is off.
constexpr int NoArrowTool = -1;
constexpr int LineTool = 0;
constexpr int SingleArrowTool = 1;
constexpr int DoubleArrowTool = 2;

// Z commands of the window's Move-in-Z button.
constexpr int BringForward = 1;
constexpr int SendBackward = 2;
constexpr int BringToFront = 3;
constexpr int SendToBack = 4;

// Number of styles in the layout-style box; style 0 is "Free style", the others are grids.
constexpr int StyleCount = 9;
constexpr int FreeStyle = 0;
constexpr int CellCounterCount = 256;

} // namespace VXSLayout
