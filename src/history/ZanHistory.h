#pragma once

// What ZanHistory gives to a program: a history that is kept in a database.

#include "history/HistoryStore.h"
