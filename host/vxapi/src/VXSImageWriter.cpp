#include "VXSImageWriter.h"

CVXSImageWriter::~CVXSImageWriter() = default;
