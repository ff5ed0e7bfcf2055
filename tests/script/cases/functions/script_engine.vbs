' What the engine says of itself.
Same ScriptEngine, "VBScript", "ScriptEngine"
Same ScriptEngineMajorVersion, CLng(5), "major version"
Ok IsNumeric(ScriptEngineMinorVersion) And IsNumeric(ScriptEngineBuildVersion), "versions"
Same GetLocale, CLng(1033), "GetLocale"
Same SetLocale(2057), CLng(1033), "SetLocale gives the old one"
Same GetLocale, CLng(2057), "and sets the new one"
