#include "plugin/vexalextensionplugin.h"

#include <vexal/vexaltypes.h>

void VexalExtensionPlugin::registerTypes(const char *)
{
    Vexal::registerTypes();
}
