' =<, => and >< are accepted.
Ok 1 =< 2, "=< is <="
Ok 2 => 2, "=> is >="
Ok 1 >< 2, ">< is <>"
Ok Not (2 =< 1), "=< that does not hold"
