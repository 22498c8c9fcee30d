#pragma once

#include "quick.h"
#include "test.h"

#include <QApplication>
