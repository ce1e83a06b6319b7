// Everything of libLUMFoundation.
#pragma once

#include "LUMPlatform/LUMPlatform.h"

#include "LUMFoundation/LUMAbsoluteTimeGetCurrent.h"
#include "LUMFoundation/LUMArray.h"
#include "LUMFoundation/LUMArray_Deprecated.h"
#include "LUMFoundation/LUMByteCountFormatter.h"
#include "LUMFoundation/LUMConstants.h"
#include "LUMFoundation/LUMDurationFormatter.h"
#include "LUMFoundation/LUMError.h"
#include "LUMFoundation/LUMExport.h"
#include "LUMFoundation/LUMJob.h"
#include "LUMFoundation/LUMJobDelegate.h"
#include "LUMFoundation/LUMJobQueue.h"
#include "LUMFoundation/LUMJobQueueDelegate.h"
#include "LUMFoundation/LUMNotificationCenter.h"
#include "LUMFoundation/LUMNotificationCenterCategory.h"
#include "LUMFoundation/LUMOSVersion.h"
#include "LUMFoundation/LUMRateReporter.h"
#include "LUMFoundation/OVFileWatcher.h"
#include "LUMFoundation/OVKQueue.h"
#include "LUMFoundation/OVMainThreadProxy.h"
