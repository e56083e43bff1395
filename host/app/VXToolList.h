#pragma once

#include <memory>
#include <vector>

class CVXToolPluginBase;

// The tools attached to the host, owned by its main window; the menus and the file opener
// read the list each time they need a tool.
using CVXToolList = std::vector<std::unique_ptr<CVXToolPluginBase>>;
