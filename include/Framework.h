// Everything of the host framework that the exported classes mention, for hosts that do not stand on it themselves.
#pragma once

#include "framework/application.h"
#include "framework/drawing.h"
#include "framework/exceptions.h"
#include "framework/export.h"
#include "framework/files.h"
#include "framework/input_method.h"
#include "framework/plane.h"
#include "framework/scalars.h"
#include "framework/settings.h"
#include "framework/system.h"
#include "framework/text.h"
#include "framework/window.h"
