// gameui: the whole public interface, services included.
#pragma once
#include "file.h"
#include "gfxsubsystem.h"
#include "logger.h"
#include "memorymgr.h"
#include "parser.h"
#include "platform.h"
#include "soundsubsystem.h"
#include "stringtable.h"
#include "uiapi.h"
#include "uinonvisualwidget.h"
#include "uisubsystem.h"
#include "uiwidget.h"
