import time

def main():
    s = ""
    for i in range(1, 100001):
        s += "line " + str(i) + "\n"
    return len(s)

start = time.process_time()
result = main()
print(time.process_time() - start, result)
