import time

def main():
    s = "the quick brown fox jumps over the lazy dog"
    n = 0
    for i in range(100000):
        n = n + s.find("lazy") + 1
        n = n + len(s[4:9].upper())
        n = n + len(s.replace("fox", "panel"))
        if s[:3] == "the":
            n = n + 1
        n = n + len(s.split(" ")) - 1
    return n

start = time.process_time()
result = main()
print(time.process_time() - start, result)
