// Expected body weight of Japanese children and adolescents.
#pragma once

namespace tool {

// In kg, by age in years and height in cm; sex 1 male, any other value female. 0.0 below half a year.
// Sources: to 5 years the quadratics of the national infant growth survey of 2000 (Ministry of Health, Labour and
// Welfare); from 6 years the lines of the Japanese Society of School Health's manual of health examinations, whose
// last row serves everyone older.
double normal_weight(double age_years, double height_cm, int sex);

}  // namespace tool
