#pragma once

class QString;
class CVXSLayoutView;

// Makes the screen copies of large images new in the view on a worker thread, behind the
// progress dialog, before the view first paints them; until they are ready the view keeps
// showing what it showed, and the rest of the window paints as usual. Images whose copies
// are in hand cost nothing.
class CVXSLayoutDisplayPreparer
{
public:
    static void prepare(CVXSLayoutView& view, const QString& strLabel);
};
