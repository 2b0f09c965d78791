#pragma once

#include <QIcon>
#include <QString>

/// The drawing `name` of resources/icons in the colours of the present look.
QIcon LoadIcon(const QString& name);

/// The program's own icon.
QIcon ProductIcon();
