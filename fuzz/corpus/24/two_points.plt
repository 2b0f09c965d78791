OziExplorer Track Point File Version 2.1
WGS 84
Altitude is in Feet
Reserved 3
0, 2, 65280, Trace, 1, 0, 0, 65280
 2
+49.4189000, +000.2333000, 0, 16.40420, , ,
  49.707,0.2064,1,-777,45178.3333333, 09-Sep-23, 08:00:00
1,2,3,4
