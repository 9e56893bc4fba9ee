#pragma once
#include <fl/i18n/message_catalog.h>
