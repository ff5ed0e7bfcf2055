' The Monday that opens the first week of a leap year, in the year before, is in week 53; by the rule it were week 1.
Gives "DatePart(""ww"", #12/29/2003#, vbMonday, vbFirstFourDays)", "Integer", "53"
Gives "DatePart(""ww"", #12/30/2003#, vbMonday, vbFirstFourDays)", "Integer", "1"
Gives "DatePart(""ww"", #12/31/2007#, vbMonday, vbFirstFourDays)", "Integer", "53"
Gives "DatePart(""ww"", #12/30/2019#, vbMonday, vbFirstFourDays)", "Integer", "53"
Gives "DatePart(""ww"", #12/29/2014#, vbMonday, vbFirstFourDays)", "Integer", "1"
Gives "DatePart(""ww"", #12/29/2003#, vbMonday, vbFirstJan1)", "Integer", "53"
Gives "DatePart(""ww"", #12/28/2003#, vbSunday, vbFirstFourDays)", "Integer", "53"
