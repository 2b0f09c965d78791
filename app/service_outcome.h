#pragma once

#include <cstdint>
#include <string>

#include "app/options.h"
#include "app/service_choice.h"
#include "io/byte_sink.h"

/// Puts the accounts and the user's settings of all services in place, before any is asked; a
/// second call does nothing. On one thread.
void PrepareServices();

/// Tells on standard error which services were asked, and how often, unless --quiet.
void TellRequests(const Options& options);

/// What a question has come to.
struct ServiceOutcome {
  uint32_t status = 0;  ///< 0, a ServiceStatus, or 100 + the transport's number
  std::string message;  ///< empty on success
};

/// The outcome for a status of a service, with the text that the user is shown for it.
ServiceOutcome OutcomeOf(uint32_t status);
/// The outcome of a question that was not asked.
ServiceOutcome OutcomeOf(const ServiceChoice& refused);

/// Writes the JSON object of a provider: its number and name.
void WriteJsonProvider(ByteSink& sink, const Service& provider);

/// Writes the status and the message of an outcome as members of a JSON object.
void WriteJsonStatus(ByteSink& sink, const ServiceOutcome& outcome);

/// Begins the JSON of an answer: "provider", "status" and "message".
void WriteJsonOutcome(ByteSink& sink, const ServiceChoice& choice, const ServiceOutcome& outcome);

/// Tells what went wrong, if something did, and gives the exit status.
int Conclude(const ServiceChoice& choice, const ServiceOutcome& outcome, bool isWritten);
