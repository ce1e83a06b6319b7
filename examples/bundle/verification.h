#pragma once

#include "LUMFoundation/LUMDocumentBundle.h"

/// Looks at everything in a bundle: folders that can be listed; codes, dictionaries and resources that can be
/// read; objects that can be made; and for each record of a file that was taken in, that its compressed file
/// has the bytes that the record tells of, and that its source is found and has them too. What is only
/// reached by a link that leads out counts as not there to be read, except for resources, which may be such
/// links. Prints what is wrong, and a last line; whether all is well.
bool verifyBundle(const NSRef<LUMDocumentBundle>& bundle);
