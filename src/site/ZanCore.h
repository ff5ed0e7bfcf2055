#pragma once

// What ZanCore gives to a program: values, objects by name, documents, and the contracts of logger and scheme.

#include "binding/MemberTable.h"
#include "binding/PropertyBag.h"
#include "document/XMLOps.h"
#include "document/XmlText.h"
#include "site/FormattedRecords.h"
#include "site/Logger.h"
#include "values/Convert.h"
#include "values/Failure.h"
#include "values/Format.h"
#include "values/Twips.h"
