#include "VXForeignPlugin.h"
