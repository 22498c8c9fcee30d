#pragma once

#include "core.h"

#include <QAccessible>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QtQml/qqmlprivate.h>
