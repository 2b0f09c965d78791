#pragma once

class QTranslator;

/// Lets the windows that are made from now on speak the program's language: the boxes of the
/// toolkit by `translator`, which must outlive them, and the numbers in fields by the language's
/// habits.
void SpeakProgramLanguage(QTranslator& translator);
