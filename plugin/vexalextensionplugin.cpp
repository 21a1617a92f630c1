#include "plugin/vexalextensionplugin.h"

#include "plugin/vexaltypes.h"

void VexalExtensionPlugin::registerTypes(const char *)
{
    Vexal::registerTypes();
}
