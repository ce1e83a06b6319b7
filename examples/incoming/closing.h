#pragma once

#include "examples/incoming/intake_bundle.h"

#include <vector>

/// What is left to do when all files are in: the folder of originals is renamed, their sources are found
/// again by the references in the records, and the dictionaries of the bundle are brought up to date. Tells
/// each step; false when one failed.
bool closeIntake(const std::string& into, const IntakeBundle& bundle, std::vector<Receipt> receipts);
