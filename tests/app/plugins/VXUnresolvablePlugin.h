#pragma once

#include <VXToolPluginBase.h>

// A tool plugin whose library needs a variable no library defines, so it cannot be loaded.
class CVXUnresolvablePlugin : public CVXToolPluginBase
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID CVXToolPluginBase_iid)
    Q_INTERFACES(CVXToolPluginBase)
public:
    int getToolType() override;
};
