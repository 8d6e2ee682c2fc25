#include "engine/levels.h"

#include <cmath>

namespace orva {

double levelOfPower(double power)
{
    return std::log(power) * 4.342944622039795;
}

double powerOfLevel(double levelDb)
{
    return std::pow(10.0, levelDb / 10);
}

} // namespace orva
