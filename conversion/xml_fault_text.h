#pragma once

#include <cstdint>

#include <expat.h>

/// The text that says what is wrong with a document, as the end of a sentence.
uint32_t XmlFaultText(XML_Error error);
