#include "XFile.h"

XFile::~XFile() = default;
