' A name stands for one member.
Fails 1041, "Class D1 : Dim a : Dim a : End Class"
