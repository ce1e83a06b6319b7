#include "LUMFoundation/LUMConstants.h"

constinit const NSStringConstant LUMNonPlistTypeException("LUMNonPlistTypeException");
constinit const NSStringConstant LUMSerializedPlistException("LUMSerializedPlistException");

constinit const NSStringConstant LUMDocumentBundle_DocumentDomain(
    "org.lumfoundation.documentbundle.domain.document");
constinit const NSStringConstant LUMDocumentBundle_Dictionary("org.lumfoundation.bundle.dictionary");

constinit const NSStringConstant LUMMediaDocumentBundle_ThumbnailJPEG("jpeg");
constinit const NSStringConstant LUMMediaDocumentBundle_ThumbnailPNG("png");
// Deliberate: no form in particular is no text at all, as a null argument is.
constinit const NSStringConstant LUMMediaDocumentBundle_ThumbnailAuto(nullptr);
