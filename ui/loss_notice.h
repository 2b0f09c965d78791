#pragma once

#include <QString>

struct LossCheck;

/// What the file of this name does not hold of the itinerary, in lines for the user.
QString DescribeLosses(const QString& fileName, const LossCheck& check);
