// What orvel convert and its workers say to each other: messages of fields, which are any bytes but
// 0. Both are one program, so nothing is said twice and no version is asked for.
#pragma once

#include <string>
#include <vector>

#include "convert_record.h"

typedef std::vector<std::string> PipeFields;

// The bytes of a message.
std::string PackMessage(const PipeFields &fields);

// Reads the next message of a descriptor; false at its end and where it is broken.
bool ReadMessage(int file, PipeFields *fields);

// Records as fields. Taking one that has other fields gives false.
PipeFields FieldsOfSettings(const ConvertSettings &settings);
bool TakeSettings(const PipeFields &fields, ConvertSettings *settings);
PipeFields FieldsOfTask(const ConvertTask &task);
bool TakeTask(const PipeFields &fields, ConvertTask *task);
PipeFields FieldsOfOutcome(const ConvertOutcome &outcome);
bool TakeOutcome(const PipeFields &fields, ConvertOutcome *outcome);
