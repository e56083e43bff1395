#include "VXUnresolvablePlugin.h"

// Data is bound when the library is loaded, unlike functions, which are bound lazily.
extern int g_nNowhereDefined;

int CVXUnresolvablePlugin::getToolType()
{
    return g_nNowhereDefined;
}
