#pragma once

#include <cstdint>

class QComboBox;

/// Fills a list with the providers that have an ability (ServiceAbility); those that are not set
/// up are greyed. Each entry's data is its number. Chooses `chosen` if it is there.
void FillServiceList(QComboBox& list, uint32_t ability, int32_t chosen);
