/**
 * @file
 * The macro before every C function that the library exports. All other functions of the library are hidden.
 * Valid C99 and C++.
 */
#ifndef ZERLIN_EXPORT_H
#define ZERLIN_EXPORT_H

#define ZERLIN_EXPORT __attribute__((visibility("default")))

#endif
