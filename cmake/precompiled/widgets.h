#pragma once

#include "core.h"

#include <QAccessibleWidget>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
