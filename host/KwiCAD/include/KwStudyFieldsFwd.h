#pragma once
// Forward declaration of the number-field reader the analysis-setup logics keep.
namespace KwStudyFields {
class Reader;
}
