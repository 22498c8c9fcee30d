#pragma once

#include "std.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QDir>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>
