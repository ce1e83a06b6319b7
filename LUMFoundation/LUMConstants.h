#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSStringConstant.h"

// Names that outlive a program, because they are compared by value, or stored in documents, by parties that
// never meet: their texts never change. Constants that belong to one class or extension set stand in its
// header; here are those that several share.
//
//     try {
//         saveSettings();
//     } catch (const NSException& exception) {
//         if (!NSEqual(exception.name(), LUMNonPlistTypeException))
//             throw;
//     }

/// Raised when a graph of objects holds one that no property list can. The text is the name itself.
extern LUM_EXPORT const NSStringConstant LUMNonPlistTypeException;
/// Raised when a leaf of a property list cannot be serialised. The text is the name itself.
extern LUM_EXPORT const NSStringConstant LUMSerializedPlistException;

/// The domain of a document bundle that is the document's own:
/// "org.lumfoundation.documentbundle.domain.document".
extern LUM_EXPORT const NSStringConstant LUMDocumentBundle_DocumentDomain;
/// A name for an application's own use with a bundle's dictionary, "org.lumfoundation.bundle.dictionary"; the
/// library never reads it.
extern LUM_EXPORT const NSStringConstant LUMDocumentBundle_Dictionary;

/// A document's thumbnail in JPEG form: "jpeg".
extern LUM_EXPORT const NSStringConstant LUMMediaDocumentBundle_ThumbnailJPEG;
/// A document's thumbnail in PNG form: "png".
extern LUM_EXPORT const NSStringConstant LUMMediaDocumentBundle_ThumbnailPNG;
/// Deliberate: this one is null. It asks for no form in particular, as a null argument does.
extern LUM_EXPORT const NSStringConstant LUMMediaDocumentBundle_ThumbnailAuto;
